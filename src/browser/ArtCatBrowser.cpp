#include "browser/ArtCatBrowser.h"

#include "browser/ArtCatBrowserPrivate.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

bool isPane(acbPanes pane) {
    return pane >= acbPaneArticlePool && pane <= acbPaneCategoryTree;
}

} // namespace

ArtCatBrowser::ArtCatBrowser(QWidget* parent)
    : UserControl(parent)
    , d_(std::make_shared<ArtCatBrowserPrivate>(*this)) {
    d_->paneLayout->ApplyVisibility();
}

ArtCatBrowser::~ArtCatBrowser() {
    d_->Terminate();
}

void ArtCatBrowser::setBackend(const Ref<dao::Database>& Backend) {
    d_->errorFrame.function(
        u"Backend (Property Set"_s,
        [&] {
            d_->state.Backend.reset();
            d_->state.Backend = Backend;
            d_->m_Finder->setDatabase(Backend);
            return true;
        },
        false);
}

void ArtCatBrowser::setWorkspace(const Ref<dao::Workspace>& Workspace) {
    d_->state.Workspace = Workspace;
}

void ArtCatBrowser::setHelper(const Ref<SessionHelper>& Helper) {
    d_->state.Helper = Helper;
}

void ArtCatBrowser::setAppName(const QString& AppName) {
    d_->state.AppName = AppName;
}

Long ArtCatBrowser::CurrentSenderID() const {
    return d_->state.CurrentSenderID;
}

void ArtCatBrowser::setCurrentSenderID(Long CurrentSenderID) {
    d_->state.CurrentSenderID = CurrentSenderID;
}

QString ArtCatBrowser::Filter(acbPanes Pane) const {
    return isPane(Pane) ? d_->state.Filter[Pane] : QString();
}

void ArtCatBrowser::setFilter(acbPanes Pane, const QString& Filter) {
    if (isPane(Pane)) d_->state.Filter[Pane] = Filter;
}

QString ArtCatBrowser::WorkgroupFilter() const {
    return d_->state.WorkgroupFilter;
}

void ArtCatBrowser::setWorkgroupFilter(const QString& WorkgroupFilter) {
    const auto hub = d_;
    QString& stored = hub->state.WorkgroupFilter;
    const bool changed = stored.compare(WorkgroupFilter, Qt::CaseInsensitive) != 0;
    stored = WorkgroupFilter.isEmpty() ? noWorkgroupFilter.toString() : WorkgroupFilter;
    if (changed && UserMode() && hub->ui.TV->Nodes().Count() > 0) hub->categoryTree->X_PopulateTV(true);
}

Long ArtCatBrowser::Selected(acbPanes Pane) const {
    switch (Pane) {
    case acbPaneArticlePool: return d_->state.SelectedPoolArticle;
    case acbPaneArticleList: return d_->state.SelectedListArticle;
    case acbPaneCategoryTree: return d_->state.SelectedCategory;
    }
    return 0;
}

bool ArtCatBrowser::Edited() const {
    return d_->state.Edited;
}

acbImagesets ArtCatBrowser::Imageset() const {
    return d_->state.Imageset;
}

void ArtCatBrowser::setImageset(acbImagesets Imageset) {
    d_->state.Imageset = Imageset;
}

bool ArtCatBrowser::ShowStatusBar() const {
    return d_->state.ShowStatusBar;
}

void ArtCatBrowser::setShowStatusBar(bool ShowStatusBar) {
    const auto hub = d_;
    hub->paneLayout->LetShowStatusBar(ShowStatusBar);
}

bool ArtCatBrowser::ShowArticlePool() const {
    return d_->state.ShowArticlePool;
}

void ArtCatBrowser::setShowArticlePool(bool ShowArticlePool) {
    const auto hub = d_;
    hub->paneLayout->LetShowArticlePool(ShowArticlePool);
}

bool ArtCatBrowser::ShowArticleList() const {
    return d_->state.ShowArticleList;
}

void ArtCatBrowser::setShowArticleList(bool ShowArticleList) {
    const auto hub = d_;
    hub->paneLayout->LetShowArticleList(ShowArticleList);
}

Long ArtCatBrowser::HelpContextID() const {
    return d_->state.HelpContextID;
}

void ArtCatBrowser::setHelpContextID(Long HelpContextID) {
    d_->state.HelpContextID = HelpContextID;
    d_->helpSettings->ApplyHelpSettings();
}

Long ArtCatBrowser::HelpContextIDExternal() const {
    return HelpContextID();
}

void ArtCatBrowser::setHelpContextIDExternal(Long HelpContextIDExternal) {
    setHelpContextID(HelpContextIDExternal);
}

bool ArtCatBrowser::HelpEvent() const {
    return d_->state.HelpEvent;
}

void ArtCatBrowser::setHelpEvent(bool HelpEvent) {
    d_->state.HelpEvent = HelpEvent;
}

QString ArtCatBrowser::Helpfile() const {
    return d_->state.Helpfile;
}

void ArtCatBrowser::setHelpfile(const QString& Helpfile) {
    d_->state.Helpfile = Helpfile;
    d_->helpSettings->ApplyHelpSettings();
}

TreeView* ArtCatBrowser::CategoryTreeView() const {
    return d_->ui.TV;
}

ListView* ArtCatBrowser::ArticlePoolListView() const {
    return d_->ui.LVArt;
}

ListView* ArtCatBrowser::ArticleListView() const {
    return d_->ui.LV;
}

double ArtCatBrowser::PaneWidth(acbPanes Pane) const {
    return d_->paneLayout->PaneWidth(Pane);
}

void ArtCatBrowser::setPaneWidth(acbPanes Pane, double Percent) {
    d_->paneLayout->LetPaneWidth(Pane, Percent);
}

void ArtCatBrowser::PaneResize() {
    const auto hub = d_;
    hub->paneLayout->PaneResize();
}

Long ArtCatBrowser::LeftCategoryTreeView() const {
    return d_->paneLayout->LeftCategoryTreeView();
}

Long ArtCatBrowser::LeftArticleListView() const {
    return d_->paneLayout->LeftArticleListView();
}

Long ArtCatBrowser::Populate() {
    const auto hub = d_; // the control may be deleted meanwhile
    return hub->population->Populate();
}

void ArtCatBrowser::ResizeControl() {
    const auto hub = d_;
    hub->paneLayout->resized();
}

} // namespace mkl
