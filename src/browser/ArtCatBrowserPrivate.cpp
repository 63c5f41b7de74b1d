#include "browser/ArtCatBrowserPrivate.h"

#include "base/EventPump.h"
#include "browser/ArtCatBrowser.h"
#include "controls/Screen.h"
#include "core/App.h"

namespace mkl {

using namespace Qt::StringLiterals;

ArtCatBrowserPrivate::ArtCatBrowserPrivate(ArtCatBrowser& control)
    : face(control)
    , ui(control)
    , errorFrame(newErrorHandler())
    , functionLibrary(makeRef<FunctionLibrary>())
    , m_Finder(std::make_unique<Finder>())
    , articleActivation(std::make_unique<ArticleActivation>(*this))
    , articleAssignment(std::make_unique<ArticleAssignment>(*this))
    , articleFind(std::make_unique<ArticleFind>(*this))
    , articleOrder(std::make_unique<ArticleOrder>(*this))
    , articlePanes(std::make_unique<ArticlePanes>(*this))
    , categoryEditing(std::make_unique<CategoryEditing>(*this))
    , categoryOrder(std::make_unique<CategoryOrder>(*this))
    , categoryTransfer(std::make_unique<CategoryTransfer>(*this))
    , categoryTree(std::make_unique<CategoryTree>(*this))
    , changeNotice(std::make_unique<ChangeNotice>(*this))
    , contextMenus(std::make_unique<ContextMenus>(*this))
    , dragDrop(std::make_unique<DragDrop>(*this))
    , dragHints(std::make_unique<DragHints>(*this))
    , dropActions(std::make_unique<DropActions>(*this))
    , editKeys(std::make_unique<EditKeys>(*this))
    , helpSettings(std::make_unique<HelpSettings>(*this))
    , keyAllocation(std::make_unique<KeyAllocation>(*this))
    , keyCommands(std::make_unique<KeyCommands>(*this))
    , menuCommands(std::make_unique<MenuCommands>(*this))
    , paneLayout(std::make_unique<PaneLayout>(*this))
    , paneStatus(std::make_unique<PaneStatus>(*this))
    , poolFilters(std::make_unique<PoolFilters>(*this))
    , population(std::make_unique<Population>(*this))
    , progressDisplay(std::make_unique<ProgressDisplay>(*this))
    , rowRefresh(std::make_unique<RowRefresh>(*this))
    , selection(std::make_unique<Selection>(*this)) {
    errorFrame.handler()->ErrorContext().fill(app().Title(), ErrorContext::ControlMode, currentError(),
                                              u"ArtCatBrowser"_s);
    helpSettings->ApplyHelpSettings();
    connectEvents();
}

ArtCatBrowserPrivate::~ArtCatBrowserPrivate() = default;

void ArtCatBrowserPrivate::Terminate() {
    state.closed = true;
    if (screen().MousePointer() == vbSizeWE) screen().setMousePointer(vbDefault); // in the middle of a drawn splitter
    state.drag = {};
    ErrorFrame::quietly([&] { ui.TV->setSelectedItem({}); },                                          //
                        [&] { ui.TV->setDropHighlight({}); }, [&] { ui.LV->setSelectedItem({}); },    //
                        [&] { ui.LV->setDropHighlight({}); }, [&] { ui.LVArt->setSelectedItem({}); }, //
                        [&] { ui.LVArt->setDropHighlight({}); });
    ui.DragTimer->setEnabled(false);
    ui.NoticeTimer->setEnabled(false);
    for (ItemView* pane : std::initializer_list<ItemView*>{ui.LVArt, ui.TV, ui.LV}) {
        pane->Drag(vbCancelDrag);
        pane->setDragIcon({});
        pane->setMouseIcon({});
    }
    for (Image* picture :
         {ui.ImageDragArticle, ui.ImageCopyArticle, ui.ImageDragFolder, ui.ImageCopyFolder, ui.ImageNoDrop})
        picture->setPicture({});
    population->CloseArtKatTable();
    state.Backend.reset();
    state.Workspace.reset();
    functionLibrary.reset();
    errorFrame.release();
    state.Helper.reset();
    m_Finder.reset();
}

void ArtCatBrowserPrivate::reportVanishedRecord(const QString& procName) const {
    constexpr Long recordNotFound = -1072;
    const Ref<ErrorHandler> handler = errorFrame.handler(); // the control may be closed while the user reads
    handler->ReportError(recordNotFound, {}, procName);
}

bool ArtCatBrowserPrivate::serveQueue() const {
    doEvents();
    return !state.closed;
}

} // namespace mkl
