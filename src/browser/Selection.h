#pragma once
#include "browser/ArtCatBrowserEnums.h"

namespace mkl {

class ArtCatBrowserPrivate;
class Item;
class ListItem;
class Node;

/// What is selected in the panes, and how the host hears of it.
class Selection {
public:
    explicit Selection(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// The click logic of the panes: after a click of the user, and whenever the program selects a row or node.
    void PoolItemClick(ListItem& item);
    void ListItemClick(ListItem& item);
    void NodeClick(Node& node);

    void LetSelected(acbPanes Pane, Long Selected);
    void SetCategoryOfTree(Long CategoryKey);
    void SetSelectedArticle(Long ArticleKey);

    /// Selects the article's first row in the list. False if there is none; then nothing is selected any more, unless
    /// the list is empty.
    bool SelectArticleInList(Long ArticleKey);
    /// Behind a read of the tree: the article that was selected before, or the list's first row.
    void selectKeptArticle();
    /// The assignment of the list's first row with that article or position, 0 if there is none.
    Long ArtKatID_FromArticle(Long ArticleKey) const;
    Long ArtKatID_FromPosition(Long Position) const;

    /// The focus left the pool: of many selected rows only the focused one stays selected.
    void CollapsePoolSelection();
    /// Collapsing a node can have moved the selection to it.
    void afterCollapse();

private:
    /// Tells the host if the key of the pane has changed. False if the control was closed by it.
    bool raiseItemSelected(acbPanes pane, Long former);
    void raiseItemClick(acbPanes pane, Item& item);
    void selectArticleOfCategory();
    void selectFirstRow();
    Long& selectedKey(acbPanes pane) const;

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
