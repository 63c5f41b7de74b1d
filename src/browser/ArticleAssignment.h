#pragma once
#include "browser/ArtCatBrowserEnums.h"
#include "controls/ListItem.h"

#include <QString>
#include <vector>

namespace mkl {

class ArtCatBrowserPrivate;
class TransMark;

/// Which articles a category holds: rows of ARTKAT come and go here, the articles themselves stay as they are.
/// Of the panes only the two lists occur.
class ArticleAssignment {
public:
    using ItemList = std::vector<Ref<ListItem>>;

    explicit ArticleAssignment(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    bool Article_IsInCat(Long ArticleID, Long CatID) const;
    /// Fills Items with the selected rows in the order in which they show, and gives their number.
    Long Article_SelectedArray(ItemList& Items, acbPanes Pane) const;
    Long ArticleID_FromListItem(const ListItem& Item, acbPanes Pane) const;

    /// Asks for the position at which ArtCount articles are put in; OldCatName is empty unless they leave a category.
    /// 0 = cancelled or failed.
    Long ArticlePosDialog(Long CatID, const QString& CatName, const QString& OldCatName, Long ArtCount,
                          Long Position) const;

    /// Both run in the transaction of their caller, who hears nothing of a failure. They give the number of rows
    /// written or deleted, 0 after a failure.
    Long Cat_AddArticles(Long CatID, Long StartOrder, const ItemList& Items, acbPanes Pane);
    Long Cat_DeleteArticles(Long CatID, const ItemList& Items);

    /// The menu entry: asks, then takes the selected articles out of the selected category.
    void kLV_DeletePosition();

private:
    Long addArticles(Long category, Long startOrder, const ItemList& items, acbPanes pane) const;
    Long deleteArticles(Long category, const ItemList& items) const;
    bool isDeletionOfSeveralWanted(Long count, const QString& category) const;
    bool isDeletionWanted(const ListItem& item, const QString& category) const;
    void deletePosition(TransMark& mark);
    void showWithoutSeveral(Long category, bool wereAll) const;
    void showWithoutOne(Long category, Long followUp) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
