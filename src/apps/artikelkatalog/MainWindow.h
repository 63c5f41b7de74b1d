#pragma once
#include "apps/artikelkatalog/CatalogueSession.h"
#include "apps/artikelkatalog/RecentFiles.h"

#include <QMainWindow>
#include <memory>

QT_BEGIN_NAMESPACE
class QAction;
class QMenu;
class QSettings;
class QStackedWidget;
QT_END_NAMESPACE

namespace mkl {

class ArtCatBrowser;

/// The window of the program: a host of the catalogue browser.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// The settings must outlive the window.
    explicit MainWindow(QSettings& settings);
    ~MainWindow() override;

    /// Opens the catalogue and shows its tree; an .mdb or .accdb is offered for import first. False if it cannot be
    /// shown, which the user was told; what was open before then still is.
    bool showFile(const QString& file);
    /// Expands the nodes of the first levels.
    void expandTree(int levels);

    /// Null while no catalogue is open.
    ArtCatBrowser* browser() const { return browser_.get(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeFileMenu();
    void makeViewMenu();
    void makeHelpMenu();
    void applyView();
    void allowViewEntries() const;
    void fillRecentFiles(QMenu& menu);

    void chooseFile();
    void chooseImport();
    QString chosenFile(const QString& title, const QStringList& filters);
    void showAbout() const;
    bool showCatalogue(const QString& file);
    bool openSession(const QString& file);
    void makeBrowser();
    void closeBrowser();
    bool readCatalogue();
    void showTitle();

    QSettings& settings_;
    RecentFiles recentFiles_;
    CatalogueSession session_;
    QStackedWidget* pages_;
    QMenu* viewMenu_ = nullptr;
    QAction* statusBarEntry_ = nullptr;
    QAction* imageset2Entry_ = nullptr;
    std::unique_ptr<ArtCatBrowser> browser_;
    bool isReading_ = false;
};

} // namespace mkl
