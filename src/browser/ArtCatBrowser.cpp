#include "browser/ArtCatBrowser.h"

#include "base/Variant.h"
#include "browser/ArtCatBrowserPrivate.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Integer helpKey = 112; // F1

bool isPane(acbPanes pane) {
    return pane >= acbPaneArticlePool && pane <= acbPaneCategoryTree;
}

size_t menuIndex(acbPanes pane) {
    if (!isPane(pane)) throwError(err::SubscriptOutOfRange);
    return static_cast<size_t>(pane);
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

QList<UserControl::BagProperty> ArtCatBrowser::bagProperties() const {
    return {{"ShowStatusBar", true},
            {"ShowArticlePool", true},
            {"ShowArticleList", true},
            {"AllowDragDrop", true},
            {"Imageset", Long{acbImageset1}}};
}

// What the bag holds counts as a whole: nothing is read or placed for a single property.
void ArtCatBrowser::ReadProperties(const PropertyBag& bag) {
    UserControl::ReadProperties(bag);
    d_->paneLayout->ApplyVisibility();
}

void ArtCatBrowser::KeyDown(Integer& KeyCode, Integer& Shift) {
    if (KeyCode == helpKey && d_->state.HelpEvent) {
        KeyCode = 0;
        Q_EMIT Help();
        return;
    }
    const auto hub = d_;
    if (hub->keyCommands->run(KeyCode, Shift)) KeyCode = 0;
}

acbPanes ArtCatBrowser::ActivePane() const {
    const QWidget* active = ActiveControl();
    if (active == d_->ui.Notice) active = d_->ui.Notice->FormerFocus();
    if (!active) throwError(err::ObjectNotSet);
    if (active->objectName().compare("LV"_L1, Qt::CaseInsensitive) == 0) return acbPaneArticleList;
    if (active->objectName().compare("TV"_L1, Qt::CaseInsensitive) == 0) return acbPaneCategoryTree;
    return acbPaneArticlePool;
}

bool ArtCatBrowser::AllowDragDrop() const {
    return d_->state.AllowDragDrop;
}

void ArtCatBrowser::setAllowDragDrop(bool AllowDragDrop) {
    d_->state.AllowDragDrop = AllowDragDrop;
    propertyChanged(u"AllowDragDrop"_s);
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

void ArtCatBrowser::setSelected(acbPanes Pane, Long Selected) {
    const auto hub = d_;
    hub->selection->LetSelected(Pane, Selected);
}

acbMenus ArtCatBrowser::ShowMenu(acbPanes Pane) const {
    return d_->state.ShowMenu[menuIndex(Pane)];
}

void ArtCatBrowser::setShowMenu(acbPanes Pane, acbMenus ShowMenu) {
    d_->state.ShowMenu[menuIndex(Pane)] = ShowMenu;
}

bool ArtCatBrowser::Edited() const {
    return d_->state.Edited;
}

acbImagesets ArtCatBrowser::Imageset() const {
    return d_->state.Imageset;
}

void ArtCatBrowser::setImageset(acbImagesets Imageset) {
    d_->state.Imageset = Imageset;
    propertyChanged(u"Imageset"_s);
}

bool ArtCatBrowser::ShowStatusBar() const {
    return d_->state.ShowStatusBar;
}

void ArtCatBrowser::setShowStatusBar(bool ShowStatusBar) {
    const auto hub = d_;
    if (readsProperties())
        hub->state.ShowStatusBar = ShowStatusBar;
    else
        hub->paneLayout->LetShowStatusBar(ShowStatusBar);
}

bool ArtCatBrowser::ShowArticlePool() const {
    return d_->state.ShowArticlePool;
}

void ArtCatBrowser::setShowArticlePool(bool ShowArticlePool) {
    const auto hub = d_;
    if (readsProperties())
        hub->state.ShowArticlePool = ShowArticlePool;
    else
        hub->paneLayout->LetShowArticlePool(ShowArticlePool);
}

bool ArtCatBrowser::ShowArticleList() const {
    return d_->state.ShowArticleList;
}

void ArtCatBrowser::setShowArticleList(bool ShowArticleList) {
    const auto hub = d_;
    if (readsProperties())
        hub->state.ShowArticleList = ShowArticleList;
    else
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

void ArtCatBrowser::setPaneWidth(acbPanes Pane, double PaneWidth) {
    d_->paneLayout->LetPaneWidth(Pane, PaneWidth);
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

void ArtCatBrowser::RefreshItem(Long ItemKey, acbPanes Pane) {
    const auto hub = d_;
    hub->rowRefresh->RefreshItem(ItemKey, Pane);
}

void ArtCatBrowser::RefreshPane(acbPanes Pane) {
    const auto hub = d_;
    hub->rowRefresh->RefreshPane(Pane);
}

Long ArtCatBrowser::PositionEditor(Long lValue, Long lMaxPos) {
    const auto hub = d_; // the control may be deleted while the form is shown
    return hub->articleOrder->PositionEditor(lValue, lMaxPos);
}

bool ArtCatBrowser::changeNotice() const {
    return d_->state.changeNotice;
}

void ArtCatBrowser::setChangeNotice(bool changeNotice) {
    d_->changeNotice->LetChangeNotice(changeNotice);
}

bool ArtCatBrowser::editKeys() const {
    return d_->state.editKeys;
}

void ArtCatBrowser::setEditKeys(bool editKeys) {
    d_->state.editKeys = editKeys;
}

bool ArtCatBrowser::keepsView() const {
    return d_->state.keepsView;
}

void ArtCatBrowser::setKeepsView(bool keepsView) {
    d_->state.keepsView = keepsView;
}

Long ArtCatBrowser::springOpenInterval() const {
    return d_->state.springOpenInterval;
}

void ArtCatBrowser::setSpringOpenInterval(Long springOpenInterval) {
    d_->state.springOpenInterval = std::max(0, springOpenInterval);
}

void ArtCatBrowser::ResizeControl() {
    const auto hub = d_;
    hub->paneLayout->resized();
}

} // namespace mkl
