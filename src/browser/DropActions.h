#pragma once
#include "browser/ArticleAssignment.h"

namespace mkl {

class ListItem;
class Node;

/// What a drop does once it is clear what was dropped where. Keys that do the same end here too.
class DropActions {
public:
    explicit DropActions(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// A drop on the pane; none of them throws. The control may be gone afterwards.
    void DropOn(acbPanes pane);

    /// Fills Items with the selected articles of the pane that the category does not hold yet, and gives their number.
    /// Those that it holds lose their selection and are told; 0 if nothing is left or the user does not go on.
    Long DragDrop_CheckCat(Long CatID, ArticleAssignment::ItemList& Items, acbPanes Pane) const;
    /// Asks for the position (Position is proposed, 0 = none) and puts the selected articles of the pane there. With
    /// an OldCatID they leave that category. Gives the number of articles, 0 where nothing was done.
    Long DragDrop_AddArticles(Long CatID, const QString& CatName, acbPanes Pane, Long OldCatID,
                              const QString& OldCatName, Long Position);

    /// Puts the pool's selection into the selected category, as a drop on its list does.
    void addPoolSelection();

private:
    Long checkOne(Long category, ArticleAssignment::ItemList& items) const;
    Long checkSeveral(Long category, ArticleAssignment::ItemList& items, acbPanes pane) const;
    Long deselectPresent(Long category, const ArticleAssignment::ItemList& items, acbPanes pane) const;
    void dropOnList();
    bool isCategorySelected() const;
    void addAtFirstRow() const;
    void moveOrSwap(Long category);
    void dropOnTree();
    void addFromPoolTo(Node& target);
    void takeArticlesTo(Node& source, Node& target);
    void takeCategoryTo(Node& source, Node& target);
    void showCopy(Long newCategory, const QString& keyToExpand) const;
    void showAdded(Node& node, Long article);
    void addToSelected(Long position, Long article);
    bool isStillThere(Long category, TransMark& mark) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
