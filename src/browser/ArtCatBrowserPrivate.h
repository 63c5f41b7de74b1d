#pragma once
// The hub of the browser: it owns the state, the constituent controls and the rooms, which know each other through it.
#include "browser/ArticleActivation.h"
#include "browser/ArticleAssignment.h"
#include "browser/ArticleFind.h"
#include "browser/ArticleOrder.h"
#include "browser/ArticlePanes.h"
#include "browser/BrowserState.h"
#include "browser/BrowserUi.h"
#include "browser/CategoryEditing.h"
#include "browser/CategoryOrder.h"
#include "browser/CategoryTransfer.h"
#include "browser/CategoryTree.h"
#include "browser/ChangeNotice.h"
#include "browser/ContextMenus.h"
#include "browser/DragDrop.h"
#include "browser/DragHints.h"
#include "browser/DropActions.h"
#include "browser/EditKeys.h"
#include "browser/HelpSettings.h"
#include "browser/KeyAllocation.h"
#include "browser/KeyCommands.h"
#include "browser/MenuCommands.h"
#include "browser/PaneLayout.h"
#include "browser/PaneStatus.h"
#include "browser/PoolFilters.h"
#include "browser/Population.h"
#include "browser/ProgressDisplay.h"
#include "browser/RowRefresh.h"
#include "browser/Selection.h"
#include "core/ErrorFrame.h"
#include "core/Finder.h"
#include "core/FunctionLibrary.h"

#include <memory>

namespace mkl {

class ArtCatBrowser;

/// Whoever calls into it from outside holds a reference meanwhile: the host may delete the control while a read
/// serves the message queue. From then on state.closed is set, and face and ui are gone.
class ArtCatBrowserPrivate final : public std::enable_shared_from_this<ArtCatBrowserPrivate> {
public:
    explicit ArtCatBrowserPrivate(ArtCatBrowser& face);
    ~ArtCatBrowserPrivate();
    Q_DISABLE_COPY_MOVE(ArtCatBrowserPrivate)

    /// Lets go of the host's objects and of the libraries.
    void Terminate();
    /// Serves the message queue once. False if the control was closed meanwhile.
    [[nodiscard]] bool serveQueue() const;
    /// Tells the user that a record seen on screen is gone.
    void reportVanishedRecord(const QString& procName = {}) const;

    ArtCatBrowser& face;
    BrowserUi ui;
    BrowserState state;
    ErrorFrame errorFrame;
    Ref<FunctionLibrary> functionLibrary;
    std::unique_ptr<Finder> m_Finder;

    const std::unique_ptr<ArticleActivation> articleActivation;
    const std::unique_ptr<ArticleAssignment> articleAssignment;
    const std::unique_ptr<ArticleFind> articleFind;
    const std::unique_ptr<ArticleOrder> articleOrder;
    const std::unique_ptr<ArticlePanes> articlePanes;
    const std::unique_ptr<CategoryEditing> categoryEditing;
    const std::unique_ptr<CategoryOrder> categoryOrder;
    const std::unique_ptr<CategoryTransfer> categoryTransfer;
    const std::unique_ptr<CategoryTree> categoryTree;
    const std::unique_ptr<ChangeNotice> changeNotice;
    const std::unique_ptr<ContextMenus> contextMenus;
    const std::unique_ptr<DragDrop> dragDrop;
    const std::unique_ptr<DragHints> dragHints;
    const std::unique_ptr<DropActions> dropActions;
    const std::unique_ptr<EditKeys> editKeys;
    const std::unique_ptr<HelpSettings> helpSettings;
    const std::unique_ptr<KeyAllocation> keyAllocation;
    const std::unique_ptr<KeyCommands> keyCommands;
    const std::unique_ptr<MenuCommands> menuCommands;
    const std::unique_ptr<PaneLayout> paneLayout;
    const std::unique_ptr<PaneStatus> paneStatus;
    const std::unique_ptr<PoolFilters> poolFilters;
    const std::unique_ptr<Population> population;
    const std::unique_ptr<ProgressDisplay> progressDisplay;
    const std::unique_ptr<RowRefresh> rowRefresh;
    const std::unique_ptr<Selection> selection;

private:
    void connectEvents();
    void connectNotice();
    void connectPane(ItemView& view, acbPanes pane);
    void connectDrag(ItemView& view, acbPanes pane);
    void connectMenu(ItemView& view, acbPanes pane);
};

} // namespace mkl
