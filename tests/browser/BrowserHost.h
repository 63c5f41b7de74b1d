#pragma once
// A host with a browser: its catalogue, the user's answers, the reported errors, the events in their order.
#include "base/EventPump.h"
#include "browser/ArtCatBrowser.h"
#include "controls/ImageList.h"
#include "controls/ListView.h"
#include "controls/ProgressBar.h"
#include "controls/Screen.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"
#include "core/RecordingErrorHandler.h"
#include "core/ScriptedAsker.h"
#include "support/CatalogueFixture.h"
#include "support/EventLog.h"
#include "support/Printing.h"

#include <functional>
#include <memory>

namespace mkl {

/// Serves nothing by itself, so that a test says what happens when the queue is served.
class ScriptedPump final : public EventPump {
public:
    ScriptedPump()
        : former_(setEventPump(this)) {}
    ~ScriptedPump() override { setEventPump(former_); }
    Q_DISABLE_COPY_MOVE(ScriptedPump)

    void serve() override {
        if (whenServed) whenServed();
    }

    std::function<void()> whenServed;

private:
    EventPump* former_;
};

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
    QString treePanel() const;
    /// The tree as indented lines of node texts.
    QStringList treeLines() const;
    /// The reported errors as "procedure: number".
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
