#include "apps/artikelkatalog/MainWindow.h"

#include "apps/artikelkatalog/CatalogueImporter.h"
#include "apps/artikelkatalog/CatalogueName.h"
#include "apps/artikelkatalog/EventPanel.h"
#include "apps/artikelkatalog/Failure.h"
#include "apps/artikelkatalog/FilterPanel.h"
#include "apps/artikelkatalog/PropertiesText.h"
#include "apps/artikelkatalog/ServerDialog.h"
#include "apps/artikelkatalog/ServerOpener.h"
#include "apps/artikelkatalog/StartPage.h"
#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "catalogue/CatalogueImport.h"
#include "controls/Asker.h"
#include "controls/CatalogueImages.h"
#include "controls/FormRunner.h"
#include "controls/TreeView.h"
#include "core/CatalogueHelper.h"
#include "dao/ServerAddress.h"

#include <QAction>
#include <QCloseEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QStackedWidget>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

const QString geometryKey = u"WindowGeometry"_s;
const QString stateKey = u"WindowState"_s;

constexpr Long springOpenInterval = 700; // ms

void expandLevels(const Ref<Node>& first, int levels) {
    if (levels <= 0) return;
    for (Ref<Node> node = first; node; node = node->Next()) {
        if (node->Children() == 0) continue;
        node->setExpanded(true);
        expandLevels(node->Child(), levels - 1);
    }
}

} // namespace

MainWindow::MainWindow(QSettings& settings)
    : settings_(settings)
    , recentFiles_(settings)
    , senders_(settings)
    , view_(settings)
    , pages_(new QStackedWidget(this)) {
    setObjectName(u"MainWindow"_s);
    setWindowIcon(applicationIcon());
    setCentralWidget(pages_);
    auto* start = new StartPage(pages_);
    connect(start, &StartPage::openWanted, this, &MainWindow::chooseFile);
    connect(start, &StartPage::serverWanted, this, &MainWindow::chooseServer);
    connect(start, &StartPage::importWanted, this, &MainWindow::chooseImport);
    pages_->addWidget(start);
    makeFileMenu();
    makeViewMenu();
    makePanels();
    makeExtrasMenu();
    makeHelpMenu();
    allowEntries();
    showTitle();
    resize(1000, 700);
    restoreGeometry(settings_.value(geometryKey).toByteArray());
    restoreState(settings_.value(stateKey).toByteArray());
}

MainWindow::~MainWindow() = default;

bool MainWindow::showFile(const QString& file) {
    if (isReading_) return false;
    if (dao::isServerAddress(file) || !isImportableDatabase(file)) return showCatalogue(file);
    const std::optional<QString> catalogue = CatalogueImporter(*this).catalogueOf(file);
    return catalogue && showCatalogue(*catalogue);
}

bool MainWindow::showCatalogue(const QString& file) {
    if (!openSession(file)) {
        if (!dao::isServerAddress(file)) recentFiles_.remove(file); // a server comes back
        return false;
    }
    recentFiles_.add(file);
    makeBrowser();
    showTitle();
    return readCatalogue();
}

bool MainWindow::openSession(const QString& file) {
    if (dao::isServerAddress(file)) return ServerOpener(session_, *this).open(file);
    return succeeds([&] { session_.open(file); },
                    [&] { showFailure(text(TextId::ProgramNotOpened, {shownName(file)})); });
}

void MainWindow::makeBrowser() {
    closeBrowser();
    browser_ = std::make_unique<ArtCatBrowser>(pages_);
    browser_->setObjectName(u"Browser"_s);
    browser_->setAppName(text(TextId::ProgramTitle));
    browser_->setChangeNotice(true);
    browser_->setEditKeys(true);
    browser_->setKeepsView(true);
    browser_->setSpringOpenInterval(springOpenInterval);
    browser_->setBackend(session_.database());
    browser_->setWorkspace(session_.workspace());
    browser_->setHelper(newSessionHelper(session_.database()));
    applySender();
    applyView();
    browser_->setShowArticlePool(poolEntry_->isChecked());
    browser_->setShowArticleList(listEntry_->isChecked());
    allowEntries();
    events_->watch(*browser_);
    connect(browser_.get(), &ArtCatBrowser::MenuPropertiesClick, this, &MainWindow::showProperties,
            Qt::QueuedConnection);
    connect(browser_.get(), &ArtCatBrowser::Quit, this, &QWidget::close, Qt::QueuedConnection);
    filters_->setBrowser(browser_.get());
    pages_->addWidget(browser_.get());
    pages_->setCurrentWidget(browser_.get());
    browser_->resize(pages_->size()); // a window that is not on show yet has not done it
    view_.applyWidths(*browser_);
}

void MainWindow::showProperties(Long key, acbPanes pane) {
    constexpr Long recordNotFound = -1072;
    const Ref<dao::Database> database = session_.database();
    if (!database) return; // closed meanwhile
    QString shown;
    const auto fails = [] { showFailure(text(TextId::ProgramNoProperties)); };
    if (!succeeds([&] { shown = propertiesText(*database, key, pane); }, fails)) return;
    const bool isGone = shown.isEmpty();
    asker().ask({.text = isGone ? codedText(recordNotFound) : shown, .flags = isGone ? vbExclamation : vbInformation});
}

void MainWindow::closeBrowser() {
    keepView();
    filters_->setBrowser(nullptr);
    browser_.reset();
    allowEntries();
}

void MainWindow::allowEntries() const {
    for (QAction* entry : viewMenu_->actions())
        entry->setEnabled(browser_ != nullptr);
    optionsEntry_->setEnabled(browser_ != nullptr);
}

void MainWindow::keepView() {
    if (browser_) view_.keepWidths(*browser_);
}

bool MainWindow::readCatalogue() {
    return whileReading([this] { browser_->Populate(); });
}

/// A read serves the message queue: the window may be closed in the middle of it. False then, and within another one.
bool MainWindow::whileReading(const std::function<void()>& read) {
    if (isReading_ || !browser_) return false;
    isReading_ = true;
    menuBar()->setEnabled(false);
    read();
    menuBar()->setEnabled(true);
    isReading_ = false;
    return browser_ != nullptr;
}

void MainWindow::expandTree(int levels) {
    TreeView& tree = *browser_->CategoryTreeView();
    if (tree.Nodes().Count() > 0) expandLevels(tree.Nodes().Item(1)->FirstSibling(), levels);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    settings_.setValue(geometryKey, saveGeometry());
    settings_.setValue(stateKey, saveState());
    closeBrowser();
    session_.close();
    event->accept();
}

void MainWindow::chooseFile() {
    const QString file = chosenFile(text(TextId::ProgramOpenTitle),
                                    {text(TextId::ProgramCatalogueFiles), text(TextId::ProgramAllFiles)});
    if (!file.isEmpty()) showFile(file);
}

// The last one that was open is where the user will look again.
void MainWindow::chooseServer() {
    const QStringList known = recentFiles_.files();
    const auto last = std::ranges::find_if(known, &dao::isServerAddress);
    ServerDialog dialog(last == known.end() ? ServerUrl() : ServerUrl::of(*last), this);
    if (formRunner().run(dialog) == QDialog::Accepted) showFile(dialog.url());
}

void MainWindow::chooseImport() {
    const QString file =
        chosenFile(text(TextId::ProgramImportTitle), {text(TextId::ProgramAccessFiles), text(TextId::ProgramAllFiles)});
    if (file.isEmpty()) return;
    if (isImportableDatabase(file)) {
        showFile(file);
    } else {
        asker().ask({.text = text(TextId::ProgramNotImportable, {QFileInfo(file).fileName()}), .flags = vbExclamation});
    }
}

QString MainWindow::chosenFile(const QString& title, const QStringList& filters) {
    QFileDialog dialog(this, title);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(filters);
    return formRunner().run(dialog) == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void MainWindow::showTitle() {
    const Ref<dao::Database>& database = session_.database();
    if (!database) {
        setWindowTitle(text(TextId::ProgramTitle));
        return;
    }
    const QString title = text(TextId::ProgramTitleWithFile, {shownName(database->Name())});
    setWindowTitle(database->Updatable() ? title : text(TextId::ProgramReadOnly, {title}));
}

} // namespace mkl
