#pragma once
#include "browser/ArtCatBrowserEnums.h"
#include "controls/UserControl.h"
#include "core/SessionHelper.h"
#include "dao/Workspace.h"

#include <memory>

namespace mkl {

// For the meta-object alone.
Q_MOC_INCLUDE("controls/ListView.h")
Q_MOC_INCLUDE("controls/TreeView.h")

class ArtCatBrowserPrivate;
class Item;
class ListView;
class TreeView;

/// A catalogue in three panes: the pool of all articles, the tree of their categories, and the articles of the
/// selected category. The host sets Backend, may narrow what is shown with filters, and calls Populate.
/// Failures while reading are reported to the user; none reaches the host but where a member says so.
/// What memberHelp says of the members below is German, for the designers of forms.
class ArtCatBrowser : public UserControl {
    Q_OBJECT
    Q_PROPERTY(mkl::ArtCatBrowserEnums::acbPanes ActivePane READ ActivePane STORED false DESIGNABLE false)
    Q_PROPERTY(bool AllowDragDrop READ AllowDragDrop WRITE setAllowDragDrop)
    Q_PROPERTY(mkl::Long CurrentSenderID READ CurrentSenderID WRITE setCurrentSenderID STORED false DESIGNABLE false)
    Q_PROPERTY(bool Edited READ Edited STORED false DESIGNABLE false)
    Q_PROPERTY(mkl::Long HelpContextID READ HelpContextID WRITE setHelpContextID STORED false DESIGNABLE false)
    Q_PROPERTY(mkl::Long HelpContextIDExternal READ HelpContextIDExternal WRITE setHelpContextIDExternal
                   STORED false DESIGNABLE false)
    Q_PROPERTY(bool HelpEvent READ HelpEvent WRITE setHelpEvent STORED false DESIGNABLE false)
    Q_PROPERTY(QString Helpfile READ Helpfile WRITE setHelpfile STORED false DESIGNABLE false)
    Q_PROPERTY(mkl::Long hWnd READ hWnd STORED false DESIGNABLE false)
    Q_PROPERTY(mkl::ArtCatBrowserEnums::acbImagesets Imageset READ Imageset WRITE setImageset)
    Q_PROPERTY(mkl::Long LeftArticleListView READ LeftArticleListView STORED false DESIGNABLE false)
    Q_PROPERTY(mkl::Long LeftCategoryTreeView READ LeftCategoryTreeView STORED false DESIGNABLE false)
    Q_PROPERTY(mkl::ListView* ArticlePoolListView READ ArticlePoolListView STORED false DESIGNABLE false)
    Q_PROPERTY(mkl::ListView* ArticleListView READ ArticleListView STORED false DESIGNABLE false)
    Q_PROPERTY(mkl::Long ReplicaID READ ReplicaID WRITE setReplicaID STORED false DESIGNABLE false)
    Q_PROPERTY(bool ShowArticleList READ ShowArticleList WRITE setShowArticleList)
    Q_PROPERTY(bool ShowArticlePool READ ShowArticlePool WRITE setShowArticlePool)
    Q_PROPERTY(bool ShowStatusBar READ ShowStatusBar WRITE setShowStatusBar)
    Q_PROPERTY(mkl::TreeView* CategoryTreeView READ CategoryTreeView STORED false DESIGNABLE false)
    Q_PROPERTY(QString WorkgroupFilter READ WorkgroupFilter WRITE setWorkgroupFilter STORED false DESIGNABLE false)
    // Beyond what catalogue hosts know.
    Q_PROPERTY(bool changeNotice READ changeNotice WRITE setChangeNotice STORED false DESIGNABLE false)
    Q_PROPERTY(bool editKeys READ editKeys WRITE setEditKeys STORED false DESIGNABLE false)
    Q_PROPERTY(bool keepsView READ keepsView WRITE setKeepsView STORED false DESIGNABLE false)
    Q_PROPERTY(
        mkl::Long springOpenInterval READ springOpenInterval WRITE setSpringOpenInterval STORED false DESIGNABLE false)

public:
    explicit ArtCatBrowser(QWidget* parent = nullptr);
    ~ArtCatBrowser() override;

    /// What a property, method or event is for, in German; empty where there is nothing to say.
    static QString memberHelp(const QString& Member);

    /// The pane that has the focus or had it last. Error 91 before any constituent had it.
    acbPanes ActivePane() const;
    bool AllowDragDrop() const;
    void setAllowDragDrop(bool AllowDragDrop);
    /// For hosts that give it; no message of the control bears it.
    Q_INVOKABLE void setAppName(const QString& AppName);
    /// The open catalogue; needed. The control holds a reference until it ends.
    Q_INVOKABLE void setBackend(const mkl::Ref<dao::Database>& Backend);
    /// Key of the sender in whose name the user works; 0 = none.
    Long CurrentSenderID() const;
    void setCurrentSenderID(Long CurrentSenderID);
    /// True once the user changed data here; nothing turns it back.
    bool Edited() const;
    /// A criterion that narrows what the pane shows, from its next read on; empty for none. Another pane than 0 to 2
    /// has none, and setting it does nothing.
    Q_INVOKABLE QString Filter(mkl::acbPanes Pane) const;
    Q_INVOKABLE void setFilter(mkl::acbPanes Pane, const QString& Filter);
    /// Gives the replica's digit for keys of new categories.
    Q_INVOKABLE void setHelper(const mkl::Ref<mkl::SessionHelper>& Helper);
    /// Help topic of the control and its constituents. HelpContextIDExternal is the same value.
    Long HelpContextID() const;
    void setHelpContextID(Long HelpContextID);
    Long HelpContextIDExternal() const;
    void setHelpContextIDExternal(Long HelpContextIDExternal);
    /// Whether F1 is the host's: it then raises Help.
    bool HelpEvent() const;
    void setHelpEvent(bool HelpEvent);
    /// Becomes the help file of the whole application. A name without a path stands in the application's folder; an
    /// empty one is "mklart25.chm".
    QString Helpfile() const;
    void setHelpfile(const QString& Helpfile);
    /// Icons of the tree; a change shows when nodes are next drawn anew.
    acbImagesets Imageset() const;
    void setImageset(acbImagesets Imageset);
    /// Left edges of the splitters before the tree and before the list, in twips.
    Long LeftCategoryTreeView() const;
    Long LeftArticleListView() const;
    /// The constituent controls; they belong to the browser.
    ListView* ArticlePoolListView() const;
    ListView* ArticleListView() const;
    TreeView* CategoryTreeView() const;
    /// Without a function: always 0.
    Long ReplicaID() const { return 0; }
    void setReplicaID(Long) {}
    /// Key of what is selected in the pane: an article or a category; 0 = none, and for another pane. Setting it
    /// selects; a key that pool or tree do not show is error 35601.
    Q_INVOKABLE mkl::Long Selected(mkl::acbPanes Pane) const;
    Q_INVOKABLE void setSelected(mkl::acbPanes Pane, mkl::Long Selected);
    /// Which panes are on show. At run time, turning a list on that is empty reads it.
    bool ShowArticleList() const;
    void setShowArticleList(bool ShowArticleList);
    bool ShowArticlePool() const;
    void setShowArticlePool(bool ShowArticlePool);
    /// What the context menu of the pane offers. Another pane is error 9.
    Q_INVOKABLE mkl::acbMenus ShowMenu(mkl::acbPanes Pane) const;
    Q_INVOKABLE void setShowMenu(mkl::acbPanes Pane, mkl::acbMenus ShowMenu);
    bool ShowStatusBar() const;
    void setShowStatusBar(bool ShowStatusBar);
    /// What [Absender-Schlüssel] is compared with, such as "IN(3,7)"; an empty text becomes "Like '*'", which admits
    /// all. A change reads a tree that is on show again at once.
    QString WorkgroupFilter() const;
    void setWorkgroupFilter(const QString& WorkgroupFilter);
    /// Carries the transactions of editing commands.
    Q_INVOKABLE void setWorkspace(const mkl::Ref<dao::Workspace>& Workspace);

    /// The pane's share of the width in percent, not rounded. A new one shows after PaneResize; until then it reads
    /// back. A pane that does not exist has 0.
    Q_INVOKABLE double PaneWidth(mkl::acbPanes Pane) const;
    Q_INVOKABLE void setPaneWidth(mkl::acbPanes Pane, double PaneWidth);

    /// Reads the catalogue. Result: number of categories in the tree, of all levels. It serves the message queue: the
    /// host may do anything meanwhile, even delete the control; the result then is 0.
    Q_INVOKABLE mkl::Long Populate();
    /// Shows anew what the row or node of that key holds. In the list the key is that of an assignment or an article;
    /// one that the list does not show is error 35601.
    Q_INVOKABLE void RefreshItem(mkl::Long ItemKey, mkl::acbPanes Pane);
    /// Reads the pane again.
    Q_INVOKABLE void RefreshPane(mkl::acbPanes Pane);

    /// Places the panes in the widths that were set. The list takes up what they leave of the control.
    Q_INVOKABLE void PaneResize();

    /// Lets the user change a position from lValue to one of 1 to lMaxPos. Result: the chosen one, 0 if it was
    /// cancelled, not changed or failed.
    Q_INVOKABLE mkl::Long PositionEditor(mkl::Long lValue = 0, mkl::Long lMaxPos = 0);

    void ReadProperties(const PropertyBag& bag) override;

    /// Whether a line at the end of the status bar says that others have changed the catalogue since the panes were
    /// read, or that its server is out of reach, with a link that reads everything again as Populate does. Nothing is
    /// read or moved before the user wants it. Off unless set; then nothing looks for changes. \since 0.1
    bool changeNotice() const;
    void setChangeNotice(bool changeNotice);
    /// Whether keys edit: Ctrl+E turns the selected articles active or inactive, where the context menu offers it. Off
    /// unless set. Other keys always work: F6 and Shift+F6 go to the next and the previous pane, F5 reads the pane
    /// again, Alt+Return raises MenuPropertiesClick where the context menu offers it. \since 0.1
    bool editKeys() const;
    void setEditKeys(bool editKeys);
    /// Whether a pane that the control reads again shows what the user had expanded and scrolled to, where the rows
    /// still exist; what gets selected comes into view all the same. Off unless set. \since 0.1
    bool keepsView() const;
    void setKeepsView(bool keepsView);
    /// How long, in milliseconds, the mouse rests on a closed node during a drag until the node opens; with it a line
    /// over the status bar says where a drop would land. 0, unless set: neither. Less than 0 counts as 0. \since 0.1
    Long springOpenInterval() const;
    void setSpringOpenInterval(Long springOpenInterval);

Q_SIGNALS:
    /// Another article or category is selected. NewID is its key.
    void ItemSelected(mkl::Long NewID, mkl::acbPanes Pane);
    /// A click on a node or row. obj is the Node or ListItem, ID its Tag. Pane is by reference: direct connections
    /// only.
    void ItemClick(mkl::Item* obj, mkl::Long ID, mkl::acbPanes& Pane);
    /// The panes have been placed anew. The arguments are the left edges of the splitters, in twips.
    void Resize(mkl::Long LeftCategoryTreeView, mkl::Long LeftArticleListView);
    /// On a pane, a splitter or the status bar; for a pane before PaneClick and PaneDblClick.
    void Click();
    void DblClick();
    /// The user wants to see the properties of an article or category.
    void MenuPropertiesClick(mkl::Long ID, mkl::acbPanes Pane);
    /// The user wants to close; the control does nothing by itself.
    void Quit();
    void PaneDblClick(mkl::acbPanes Pane);
    void PaneClick(mkl::acbPanes Pane);
    /// F1 while HelpEvent is set.
    void Help();
    /// On a pane, before the control reacts. Arguments as of ItemView, X and Y in the control's own coordinates; all
    /// by reference, direct connections only.
    void MouseDown(mkl::Integer& Button, mkl::Integer& Shift, mkl::Single& X, mkl::Single& Y);
    void MouseMove(mkl::Integer& Button, mkl::Integer& Shift, mkl::Single& X, mkl::Single& Y);
    void MouseUp(mkl::Integer& Button, mkl::Integer& Shift, mkl::Single& X, mkl::Single& Y);

protected:
    QList<BagProperty> bagProperties() const override;
    void KeyDown(Integer& KeyCode, Integer& Shift) override;
    void ResizeControl() override;

private:
    friend struct BrowserAccess; // tests reach the rooms through it

    const std::shared_ptr<ArtCatBrowserPrivate> d_;
};

} // namespace mkl
