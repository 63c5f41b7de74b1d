#pragma once
#include "base/Ref.h"
#include "browser/ArtCatBrowserEnums.h"
#include "controls/UserControl.h"

#include <memory>

namespace dao {
class Database;
class Workspace;
} // namespace dao

namespace mkl {

class ArtCatBrowserPrivate;
class Item;
class ListView;
class SessionHelper;
class TreeView;

/// A catalogue in three panes: the pool of all articles, the tree of their categories, and the articles of the
/// selected category. The host sets Backend, may narrow what is shown with filters, and calls Populate.
/// Failures while reading are reported to the user; none reaches the host.
class ArtCatBrowser : public UserControl {
    Q_OBJECT

public:
    explicit ArtCatBrowser(QWidget* parent = nullptr);
    ~ArtCatBrowser() override;

    /// The open catalogue; needed. The control holds a reference until it ends.
    void setBackend(const Ref<dao::Database>& Backend);
    /// Carries the transactions of editing commands.
    void setWorkspace(const Ref<dao::Workspace>& Workspace);
    /// Gives the replica's digit for keys of new categories.
    void setHelper(const Ref<SessionHelper>& Helper);
    void setAppName(const QString& AppName);

    /// Key of the sender in whose name the user works; 0 = none.
    Long CurrentSenderID() const;
    void setCurrentSenderID(Long CurrentSenderID);

    /// A criterion that narrows what the pane shows, from its next read on; empty for none. Another pane than 0 to 2
    /// has none, and setting it does nothing.
    QString Filter(acbPanes Pane) const;
    void setFilter(acbPanes Pane, const QString& Filter);
    /// What [Absender-Schlüssel] is compared with, such as "IN(3,7)"; an empty text becomes "Like '*'", which admits
    /// all. A change reads a tree that is on show again at once.
    QString WorkgroupFilter() const;
    void setWorkgroupFilter(const QString& WorkgroupFilter);

    /// Key of what is selected in the pane: an article or a category; 0 = none.
    Long Selected(acbPanes Pane) const;
    /// True once the user changed data here; nothing turns it back.
    bool Edited() const;

    /// Icons of the tree; a change shows when nodes are next drawn anew.
    acbImagesets Imageset() const;
    void setImageset(acbImagesets Imageset);
    /// Which panes are on show. At run time, turning a list on that is empty reads it.
    bool ShowStatusBar() const;
    void setShowStatusBar(bool ShowStatusBar);
    bool ShowArticlePool() const;
    void setShowArticlePool(bool ShowArticlePool);
    bool ShowArticleList() const;
    void setShowArticleList(bool ShowArticleList);

    /// Help topic of the control and its constituents. HelpContextIDExternal is the same value.
    Long HelpContextID() const;
    void setHelpContextID(Long HelpContextID);
    Long HelpContextIDExternal() const;
    void setHelpContextIDExternal(Long HelpContextIDExternal);
    /// Whether F1 is the host's.
    bool HelpEvent() const;
    void setHelpEvent(bool HelpEvent);
    /// Becomes the help file of the whole application. A name without a path stands in the application's folder; an
    /// empty one is "mklart25.chm".
    QString Helpfile() const;
    void setHelpfile(const QString& Helpfile);

    /// The constituent controls; they belong to the browser.
    TreeView* CategoryTreeView() const;
    ListView* ArticlePoolListView() const;
    ListView* ArticleListView() const;

    /// Reads the catalogue. Result: number of categories in the tree, of all levels. It serves the message queue: the
    /// host may do anything meanwhile, even delete the control; the result then is 0.
    Long Populate();

    /// The pane's share of the width in percent, not rounded. A new one shows after PaneResize; until then it reads
    /// back. A pane that does not exist has 0.
    double PaneWidth(acbPanes Pane) const;
    void setPaneWidth(acbPanes Pane, double Percent);
    /// Places the panes in the widths that were set. The list takes up what they leave of the control.
    void PaneResize();
    /// Left edges of the splitters before the tree and before the list, in twips.
    Long LeftCategoryTreeView() const;
    Long LeftArticleListView() const;

Q_SIGNALS:
    /// Another article or category is selected. NewID is its key.
    void ItemSelected(mkl::Long NewID, mkl::acbPanes Pane);
    /// A click on a node or row. obj is the Node or ListItem, ID its Tag. Pane is by reference: direct connections
    /// only.
    void ItemClick(mkl::Item* obj, mkl::Long ID, mkl::acbPanes& Pane);
    /// The panes have been placed anew. The arguments are the left edges of the splitters, in twips.
    void Resize(mkl::Long LeftCategoryTreeView, mkl::Long LeftArticleListView);

protected:
    void ResizeControl() override;

private:
    const std::shared_ptr<ArtCatBrowserPrivate> d_;
};

} // namespace mkl
