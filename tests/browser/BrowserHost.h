#pragma once
// A host with a browser: its catalogue, the user's answers, the reported errors, the events in their order.
#include "browser/ArtCatBrowser.h"
#include "controls/ImageList.h"
#include "controls/ListView.h"
#include "controls/ProgressBar.h"
#include "controls/Screen.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"
#include "support/BrowserAccess.h"
#include "support/CatalogueFixture.h"
#include "support/EventLog.h"
#include "support/Printing.h"
#include "support/RecordingErrorHandler.h"
#include "support/ScriptedAsker.h"
#include "support/ScriptedPump.h"

#include <memory>

namespace mkl {

using namespace Qt::StringLiterals;

class BrowserHost : public ::testing::Test {
protected:
    explicit BrowserHost(const QString& picture = {});
    ~BrowserHost() override;

    /// A browser on the catalogue, its events recorded.
    void makeBrowser();

    TreeView& tree() const { return *browser->CategoryTreeView(); }
    Ref<Node> node(Long category) const;
    template<class Control>
    Control& constituent(const QString& name) const {
        return *browser->findChild<Control*>(name);
    }
    QString treePanel() const { return panel(u"TV"_s); }
    QString panel(const QString& key) const;
    ListView& list() const { return *browser->ArticleListView(); }
    ListView& pool() const { return *browser->ArticlePoolListView(); }
    /// The rows as "key|tag|text|sub-items|icon".
    static QStringList rowsOf(const ListView& view);
    /// The texts of the first column.
    static QStringList textsOf(const ListView& view);
    Ref<ListItem> poolRow(Long article) const { return pool().ListItems().Item(u"A%1"_s.arg(article)); }
    /// What stands behind the control.
    ArtCatBrowserPrivate& hub() const { return BrowserAccess::hub(*browser); }
    /// Ticks an entry of a context menu, as its command does.
    void tick(const QString& entry, bool checked = true) const { hub().ui.menus.Item(entry).setChecked(checked); }
    /// The tree as indented lines of node texts.
    QStringList treeLines() const;
    /// The reported errors as "procedure: number", coded ones as their code.
    QStringList takeReports() const;

    ScriptedPump pump;
    ScriptedAsker user;
    Ref<RecordingErrorHandler> errors = makeRef<RecordingErrorHandler>();
    CatalogueFixture catalogue;
    EventLog events;
    std::unique_ptr<ArtCatBrowser> browser;

private:
    ErrorHandlerFactory formerFactory_;
};

} // namespace mkl
