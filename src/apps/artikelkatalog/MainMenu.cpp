// The menus of the program's window.
#include "apps/artikelkatalog/CatalogueOptions.h"
#include "apps/artikelkatalog/EventPanel.h"
#include "apps/artikelkatalog/Failure.h"
#include "apps/artikelkatalog/FilterPanel.h"
#include "apps/artikelkatalog/MainWindow.h"
#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "controls/Asker.h"
#include "controls/FormRunner.h"
#include "dao/ServerAddress.h"

#include <QCoreApplication>
#include <QDir>
#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

QAction* addEntry(QMenu& menu, const QString& name, const QString& caption, const QKeySequence& keys = {}) {
    auto* entry = menu.addAction(caption);
    entry->setObjectName(name);
    entry->setShortcut(keys);
    return entry;
}

} // namespace

void MainWindow::makeFileMenu() {
    QMenu& menu = *menuBar()->addMenu(text(TextId::ProgramMenuFile));
    connect(addEntry(menu, u"Open"_s, text(TextId::ProgramMenuOpen), QKeySequence::Open), &QAction::triggered, this,
            &MainWindow::chooseFile);
    connect(addEntry(menu, u"OpenServer"_s, text(TextId::ProgramMenuOpenServer)), &QAction::triggered, this,
            &MainWindow::chooseServer);
    connect(addEntry(menu, u"Import"_s, text(TextId::ProgramMenuImport)), &QAction::triggered, this,
            &MainWindow::chooseImport);
    QMenu& recent = *menu.addMenu(text(TextId::ProgramMenuRecentFiles));
    recent.setObjectName(u"RecentFiles"_s);
    connect(&recent, &QMenu::aboutToShow, this, [this, &recent] { fillRecentFiles(recent); });
    menu.addSeparator();
    connect(addEntry(menu, u"Quit"_s, text(TextId::ProgramMenuQuit), QKeySequence(Qt::CTRL | Qt::Key_Q)),
            &QAction::triggered, this, &QWidget::close);
}

void MainWindow::fillRecentFiles(QMenu& menu) {
    menu.clear();
    for (const QString& file : recentFiles_.files()) {
        QString caption = dao::isServerAddress(file) ? file : QDir::toNativeSeparators(file);
        QAction* entry = menu.addAction(caption.replace(u"&"_s, u"&&"_s));
        connect(entry, &QAction::triggered, this, [this, file] { showFile(file); });
    }
    if (menu.isEmpty()) menu.addAction(text(TextId::ProgramMenuNoRecentFiles))->setEnabled(false);
}

void MainWindow::makeViewMenu() {
    viewMenu_ = menuBar()->addMenu(text(TextId::ProgramMenuView));
    // F5 belongs to the browser, which reads one pane again.
    connect(addEntry(*viewMenu_, u"Reload"_s, text(TextId::ProgramMenuReload), QKeySequence(Qt::CTRL | Qt::Key_R)),
            &QAction::triggered, this, &MainWindow::readCatalogue);
    viewMenu_->addSeparator();
    poolEntry_ = addSwitch(u"ArticlePool"_s, text(TextId::ProgramMenuArticlePool), true, [this] { applyPanes(); });
    listEntry_ = addSwitch(u"ArticleList"_s, text(TextId::ProgramMenuArticleList), true, [this] { applyPanes(); });
    statusBarEntry_ = addSwitch(u"StatusBar"_s, text(TextId::ProgramMenuStatusBar), true, [this] { applyView(); });
    imageset2Entry_ = addSwitch(u"Imageset2"_s, text(TextId::ProgramMenuImageset2), false, [this] { applyImageset(); });
    viewMenu_->addSeparator();
}

QAction* MainWindow::addSwitch(const QString& name, const QString& caption, bool otherwise,
                               const std::function<void()>& apply) {
    QAction* entry = addEntry(*viewMenu_, name, caption);
    entry->setCheckable(true);
    entry->setChecked(view_.isOn(name, otherwise));
    connect(entry, &QAction::triggered, this, [this, name, apply](bool on) {
        view_.setOn(name, on);
        apply();
    });
    return entry;
}

void MainWindow::makePanels() {
    filters_ = new FilterPanel(this);
    connect(filters_, &FilterPanel::applyWanted, this, &MainWindow::applyFilters);
    events_ = new EventPanel(this);
    addPanel(filters_, u"Filters"_s, text(TextId::ProgramFilters));
    addPanel(events_, u"EventLog"_s, text(TextId::ProgramEvents));
}

void MainWindow::addPanel(QWidget* panel, const QString& name, const QString& title) {
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(name + u"Dock"_s);
    dock->setWidget(panel);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    dock->hide();
    dock->toggleViewAction()->setObjectName(name);
    viewMenu_->addAction(dock->toggleViewAction());
}

void MainWindow::applyView() {
    browser_->setShowStatusBar(statusBarEntry_->isChecked());
    browser_->setImageset(imageset2Entry_->isChecked() ? acbImageset2 : acbImageset1);
}

void MainWindow::applyImageset() {
    applyView();
    readCatalogue(); // nodes keep their icons until then
}

void MainWindow::applyPanes() {
    whileReading([this] {
        browser_->setShowArticlePool(poolEntry_->isChecked());
        if (browser_) browser_->setShowArticleList(listEntry_->isChecked());
    });
}

void MainWindow::applyFilters() {
    if (whileReading([this] { filters_->apply(); })) applySender();
}

// A workgroup filter that names a sender decides; the browser finds it there where the host names none.
void MainWindow::applySender() {
    if (!browser_) return;
    const bool isFiltered = browser_->WorkgroupFilter().compare(u"Like '*'"_s, Qt::CaseInsensitive) != 0;
    Long sender = 0;
    // Without a sender a new category is refused in words.
    if (!isFiltered) ErrorFrame::quietly([&] { sender = senders_.senderOf(*session_.database()); });
    browser_->setCurrentSenderID(sender);
}

void MainWindow::makeExtrasMenu() {
    QMenu& menu = *menuBar()->addMenu(text(TextId::ProgramMenuExtras));
    optionsEntry_ = addEntry(menu, u"CatalogueOptions"_s, text(TextId::ProgramMenuCatalogueOptions));
    connect(optionsEntry_, &QAction::triggered, this, &MainWindow::editOptions);
}

void MainWindow::editOptions() {
    std::unique_ptr<CatalogueOptions> dialog;
    const auto read = [&] { dialog = std::make_unique<CatalogueOptions>(session_.database(), senders_, this); };
    const auto tell = [] { asker().ask({.text = currentError().Description(), .flags = vbExclamation}); };
    if (!succeeds(read, tell)) return;
    formRunner().run(*dialog);
    applySender();
}

void MainWindow::makeHelpMenu() {
    QMenu& menu = *menuBar()->addMenu(text(TextId::ProgramMenuHelp));
    connect(addEntry(menu, u"About"_s, text(TextId::ProgramMenuAbout)), &QAction::triggered, this,
            &MainWindow::showAbout);
}

void MainWindow::showAbout() const {
    asker().ask({.text = text(TextId::ProgramAbout, {QCoreApplication::applicationVersion()}), .flags = vbInformation});
}

} // namespace mkl
