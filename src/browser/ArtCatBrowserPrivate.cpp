#include "browser/ArtCatBrowserPrivate.h"

#include "base/EventPump.h"
#include "browser/ArtCatBrowser.h"
#include "core/App.h"

namespace mkl {

using namespace Qt::StringLiterals;

ArtCatBrowserPrivate::ArtCatBrowserPrivate(ArtCatBrowser& control)
    : face(control)
    , ui(control)
    , errorFrame(newErrorHandler())
    , functionLibrary(makeRef<FunctionLibrary>())
    , m_Finder(std::make_unique<Finder>())
    , articlePanes(std::make_unique<ArticlePanes>(*this))
    , categoryTree(std::make_unique<CategoryTree>(*this))
    , helpSettings(std::make_unique<HelpSettings>(*this))
    , paneLayout(std::make_unique<PaneLayout>(*this))
    , population(std::make_unique<Population>(*this))
    , progressDisplay(std::make_unique<ProgressDisplay>(*this))
    , selection(std::make_unique<Selection>(*this)) {
    errorFrame.handler()->ErrorContext().fill(app().Title(), ErrorContext::ControlMode, currentError(),
                                              u"ArtCatBrowser"_s);
    helpSettings->ApplyHelpSettings();
    connectEvents();
}

ArtCatBrowserPrivate::~ArtCatBrowserPrivate() = default;

void ArtCatBrowserPrivate::Terminate() {
    state.closed = true;
    ErrorFrame::quietly([&] { ui.TV->setSelectedItem({}); },                                          //
                        [&] { ui.TV->setDropHighlight({}); }, [&] { ui.LV->setSelectedItem({}); },    //
                        [&] { ui.LV->setDropHighlight({}); }, [&] { ui.LVArt->setSelectedItem({}); }, //
                        [&] { ui.LVArt->setDropHighlight({}); });
    population->CloseArtKatTable();
    state.Backend.reset();
    state.Workspace.reset();
    functionLibrary.reset();
    errorFrame.release();
    state.Helper.reset();
    m_Finder.reset();
}

bool ArtCatBrowserPrivate::serveQueue() const {
    doEvents();
    return !state.closed;
}

} // namespace mkl
