// The menus of the program's window.
#include "apps/artikelkatalog/MainWindow.h"
#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "controls/Asker.h"

#include <QCoreApplication>
#include <QDir>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

QAction* addEntry(QMenu& menu, const QString& name, TextId caption, const QKeySequence& keys = {}) {
    auto* entry = menu.addAction(text(caption));
    entry->setObjectName(name);
    entry->setShortcut(keys);
    return entry;
}

} // namespace

void MainWindow::makeFileMenu() {
    QMenu& menu = *menuBar()->addMenu(text(TextId::ProgramMenuFile));
    connect(addEntry(menu, u"Open"_s, TextId::ProgramMenuOpen, QKeySequence::Open), &QAction::triggered, this,
            &MainWindow::chooseFile);
    connect(addEntry(menu, u"Import"_s, TextId::ProgramMenuImport), &QAction::triggered, this,
            &MainWindow::chooseImport);
    QMenu& recent = *menu.addMenu(text(TextId::ProgramMenuRecentFiles));
    recent.setObjectName(u"RecentFiles"_s);
    connect(&recent, &QMenu::aboutToShow, this, [this, &recent] { fillRecentFiles(recent); });
    menu.addSeparator();
    connect(addEntry(menu, u"Quit"_s, TextId::ProgramMenuQuit, QKeySequence(Qt::CTRL | Qt::Key_Q)), &QAction::triggered,
            this, &QWidget::close);
}

void MainWindow::fillRecentFiles(QMenu& menu) {
    menu.clear();
    for (const QString& file : recentFiles_.files()) {
        QAction* entry = menu.addAction(QDir::toNativeSeparators(file).replace(u"&"_s, u"&&"_s));
        connect(entry, &QAction::triggered, this, [this, file] { showFile(file); });
    }
    if (menu.isEmpty()) menu.addAction(text(TextId::ProgramMenuNoRecentFiles))->setEnabled(false);
}

void MainWindow::makeViewMenu() {
    viewMenu_ = menuBar()->addMenu(text(TextId::ProgramMenuView));
    connect(addEntry(*viewMenu_, u"Reload"_s, TextId::ProgramMenuReload, QKeySequence(Qt::Key_F5)), &QAction::triggered,
            this, &MainWindow::readCatalogue);
    viewMenu_->addSeparator();
    statusBarEntry_ = addEntry(*viewMenu_, u"StatusBar"_s, TextId::ProgramMenuStatusBar);
    imageset2Entry_ = addEntry(*viewMenu_, u"Imageset2"_s, TextId::ProgramMenuImageset2);
    for (QAction* entry : {statusBarEntry_, imageset2Entry_})
        entry->setCheckable(true);
    statusBarEntry_->setChecked(true);
    connect(statusBarEntry_, &QAction::triggered, this, &MainWindow::applyView);
    connect(imageset2Entry_, &QAction::triggered, this, [this] {
        applyView();
        readCatalogue(); // nodes keep their icons until then
    });
}

void MainWindow::applyView() {
    browser_->setShowStatusBar(statusBarEntry_->isChecked());
    browser_->setImageset(imageset2Entry_->isChecked() ? acbImageset2 : acbImageset1);
}

void MainWindow::makeHelpMenu() {
    QMenu& menu = *menuBar()->addMenu(text(TextId::ProgramMenuHelp));
    connect(addEntry(menu, u"About"_s, TextId::ProgramMenuAbout), &QAction::triggered, this, &MainWindow::showAbout);
}

void MainWindow::showAbout() const {
    asker().ask({.text = text(TextId::ProgramAbout, {QCoreApplication::applicationVersion()}), .flags = vbInformation});
}

} // namespace mkl
