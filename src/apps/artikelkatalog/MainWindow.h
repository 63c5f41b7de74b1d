#pragma once
#include "apps/artikelkatalog/BrowserView.h"
#include "apps/artikelkatalog/CatalogueSession.h"
#include "apps/artikelkatalog/RecentFiles.h"
#include "apps/artikelkatalog/SenderChoice.h"
#include "browser/ArtCatBrowserEnums.h"

#include <QMainWindow>
#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QAction;
class QDockWidget;
class QMenu;
class QSettings;
class QStackedWidget;
QT_END_NAMESPACE

namespace mkl {

class ArtCatBrowser;
class EventPanel;
class FilterPanel;

/// The window of the program: a host of the catalogue browser.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// The settings must outlive the window.
    explicit MainWindow(QSettings& settings);
    ~MainWindow() override;

    /// Opens the catalogue, a file or one on a server, and shows its tree; an .mdb or .accdb is offered for import
    /// first. False if it cannot be shown, which the user was told; what was open before then still is.
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
    void makeExtrasMenu();
    void makeHelpMenu();
    QAction* addSwitch(const QString& name, const QString& caption, bool otherwise, const std::function<void()>& apply);
    void makePanels();
    void addPanel(QWidget* panel, const QString& name, const QString& title);
    void applyView();
    void applyPanes();
    void applyImageset();
    void applyFilters();
    void applySender();
    void editOptions();
    void allowEntries() const;
    void fillRecentFiles(QMenu& menu);

    void chooseFile();
    void chooseServer();
    void chooseImport();
    QString chosenFile(const QString& title, const QStringList& filters);
    void showAbout() const;
    void showProperties(Long key, acbPanes pane);
    bool showCatalogue(const QString& file);
    bool openSession(const QString& file);
    void makeBrowser();
    void closeBrowser();
    void keepView();
    bool readCatalogue();
    bool whileReading(const std::function<void()>& read);
    void showTitle();

    QSettings& settings_;
    RecentFiles recentFiles_;
    SenderChoice senders_;
    BrowserView view_;
    CatalogueSession session_;
    QStackedWidget* pages_;
    EventPanel* events_ = nullptr;
    FilterPanel* filters_ = nullptr;
    QMenu* viewMenu_ = nullptr;
    QAction* optionsEntry_ = nullptr;
    QAction* statusBarEntry_ = nullptr;
    QAction* imageset2Entry_ = nullptr;
    QAction* poolEntry_ = nullptr;
    QAction* listEntry_ = nullptr;
    std::unique_ptr<ArtCatBrowser> browser_;
    bool isReading_ = false;
};

} // namespace mkl
