// The menus of the program's window.
#include "apps/artikelkatalog/MainWindow.h"
#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "controls/Asker.h"

#include <QActionGroup>
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
    QMenu& menu = *menuBar()->addMenu(text(TextId::ProgramMenuView));
    QAction* reload = addEntry(menu, u"Reload"_s, TextId::ProgramMenuReload, QKeySequence(Qt::Key_F5));
    connect(reload, &QAction::triggered, this, &MainWindow::readCatalogue);
    menu.addSeparator();
    QAction* statusBarEntry = addEntry(menu, u"StatusBar"_s, TextId::ProgramMenuStatusBar);
    statusBarEntry->setCheckable(true);
    connect(statusBarEntry, &QAction::triggered, this, [this](bool on) { browser_->setShowStatusBar(on); });
    auto* sets = new QActionGroup(this);
    sets->addAction(addEntry(menu, u"Imageset1"_s, TextId::ProgramMenuImageset1))->setData(acbImageset1);
    sets->addAction(addEntry(menu, u"Imageset2"_s, TextId::ProgramMenuImageset2))->setData(acbImageset2);
    for (QAction* entry : sets->actions())
        entry->setCheckable(true);
    connect(sets, &QActionGroup::triggered, this, [this](const QAction* entry) {
        browser_->setImageset(static_cast<acbImagesets>(entry->data().toInt()));
        readCatalogue();
    });
    connect(&menu, &QMenu::aboutToShow, this, [this, reload, statusBarEntry, sets] {
        for (QAction* entry : QList{reload, statusBarEntry} + sets->actions())
            entry->setEnabled(browser_ != nullptr);
        if (!browser_) return;
        statusBarEntry->setChecked(browser_->ShowStatusBar());
        sets->actions().at(browser_->Imageset())->setChecked(true);
    });
}

void MainWindow::makeHelpMenu() {
    QMenu& menu = *menuBar()->addMenu(text(TextId::ProgramMenuHelp));
    connect(addEntry(menu, u"About"_s, TextId::ProgramMenuAbout), &QAction::triggered, this, &MainWindow::showAbout);
}

void MainWindow::showAbout() const {
    asker().ask({.text = text(TextId::ProgramAbout, {QCoreApplication::applicationVersion()}), .flags = vbInformation});
}

} // namespace mkl
