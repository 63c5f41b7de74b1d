#pragma once
// A host program as a command meets it: a workspace of its own on a catalogue's file, the browser with its panes read,
// a user who answers by a list.
#include "controls/FormRunner.h"
#include "dao/Workspace.h"
#include "support/BrowserAccess.h"
#include "support/RecordingErrorHandler.h"
#include "support/ScriptedAsker.h"
#include "support/ScriptedPump.h"
#include "support/StandingClock.h"

#include <QDialog>
#include <functional>
#include <memory>

namespace mkl {

/// Fills in forms without showing them; one that nobody fills in is cancelled.
class FilledForms final : public FormRunner {
public:
    FilledForms()
        : former_(setFormRunner(this)) {}
    ~FilledForms() override { setFormRunner(former_); }
    Q_DISABLE_COPY_MOVE(FilledForms)

    int run(QDialog& form) override;

    QList<std::function<void(QDialog&)>> answers; ///< taken from the front

private:
    FormRunner* former_;
};

/// What the process has once, whatever number of hosts: the clock, the user, the message queue.
struct ScriptedWorld {
    static constexpr double today = 46347.5; // 2026-11-21 12:00

    const StandingClock clock{today};
    ScriptedAsker user;
    FilledForms forms;
    ScriptedPump pump;
};

class CommandHost {
public:
    CommandHost(ScriptedWorld& world, const QString& file, const dao::OpenOptions& options);
    ~CommandHost();
    Q_DISABLE_COPY_MOVE(CommandHost)

    /// Reads all panes and selects the category.
    void show(Long category);
    /// Selects rows of the list by their places from 1, the first of them as the one that has the focus.
    void selectRows(const QList<Long>& places);
    /// The same for rows of the pool, by their articles.
    void selectPool(const QList<Long>& articles);

    ScriptedWorld& world() const { return world_; }
    ArtCatBrowser& browser() const { return *browser_; }
    ArtCatBrowserPrivate& hub() const { return BrowserAccess::hub(*browser_); }
    ListView& list() const { return *browser_->ArticleListView(); }
    ListView& pool() const { return *browser_->ArticlePoolListView(); }
    TreeView& tree() const { return *browser_->CategoryTreeView(); }
    dao::Workspace& workspace() const { return *workspace_; }
    dao::Database& database() const { return *database_; }
    QList<ErrorReport>& reports() const { return errors_->reports; }

    /// The row of the list at a place from 1.
    Ref<ListItem> row(Long place) const;
    Long assignmentAt(Long place) const;
    /// "assignment position article" of each row of the list.
    QStringList listRows() const;
    /// The same, as a read of the file by another program gives it now.
    QStringList storedListRows(const QString& file) const;

    /// The texts of the nodes with their keys, sorted, and as they are stored.
    QStringList treeRows() const;
    static QStringList storedTreeRows(const QString& file);

private:
    ScriptedWorld& world_;
    Ref<RecordingErrorHandler> errors_ = makeRef<RecordingErrorHandler>();
    Ref<dao::Workspace> workspace_;
    Ref<dao::Database> database_;
    std::unique_ptr<ArtCatBrowser> browser_;
};

} // namespace mkl
