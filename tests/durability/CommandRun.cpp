#include "CommandRun.h"

#include "controls/Asker.h"
#include "controls/ListView.h"
#include "support/CatalogueFixture.h"
#include "support/CheckFindings.h"
#include "support/PostgresServer.h"

#include <QRegularExpression>
#include <algorithm>
#include <gtest/gtest.h>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 never = std::numeric_limits<qint64>::max();

/// Watches the statements of a command up to the one that fails.
class FailingStatement {
public:
    FailingStatement() {
        dao::FaultPoints::setObserver([this](QByteArrayView native) {
            if (dao::FaultPoints::hasFired()) return;
            inTransaction_ = inTransaction_ || native_.startsWith("BEGIN");
            if (native_ == "COMMIT") {
                behindCommit_ = true;
                inTransaction_ = false;
            }
            native_ = native.toByteArray();
            ++count_;
        });
    }
    ~FailingStatement() { dao::FaultPoints::setObserver({}); }
    Q_DISABLE_COPY_MOVE(FailingStatement)

    qint64 count() const { return count_; } ///< of statements, with the one that fails
    bool isBeforeTransaction() const { return !inTransaction_ && !behindCommit_ && !native_.startsWith("BEGIN"); }
    bool isBehindCommit() const { return behindCommit_; }
    /// Of the rows below all categories; those below a single one are read by themselves then.
    bool isReadAhead() const { return native_.contains("\"Parent\" FROM "); }
    // A server gives nothing up but with its connection: every statement is undone by itself.
    bool givesUp(dao::StatementFault fault) const {
        if (testsOnServer() && fault != dao::StatementFault::LostConnection) return false;
        const bool writes =
            native_.startsWith("INSERT") || native_.startsWith("UPDATE") || native_.startsWith("DELETE");
        return inTransaction_ &&
               (fault == dao::StatementFault::DiskFull || fault == dao::StatementFault::LostConnection ||
                (fault == dao::StatementFault::Interrupt && writes));
    }

private:
    QByteArray native_;
    qint64 count_ = 0;
    bool inTransaction_ = false;
    bool behindCommit_ = false;
};

/// Whether a row got the date of the standing clock.
bool hasChanged(const dao::Recordset& row) {
    const Variant changed = row.value(u"LetzteÄnderung");
    return !changed.isNull() && changed.toDate() == ScriptedWorld::today;
}

CatalogueRows rowsOf(const QString& file) {
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(file, {.busyTimeoutMilliseconds = 0});
    CatalogueRows result;
    const auto assignments = database->OpenRecordset(u"SELECT * FROM ARTKAT"_s, dao::dbOpenForwardOnly);
    for (const dao::Recordset& row = *assignments; !row.Eof(); assignments->MoveNext())
        result.assignments[row.value(u"ArtKatID").toLong()] = {row.value(u"Artikel-Schlüssel").toLong(),
                                                               row.value(u"Kategorie-Schlüssel").toLong(),
                                                               row.value(u"Order").toLong(), hasChanged(row)};
    const auto categories = database->OpenRecordset(u"SELECT * FROM [ARTIKEL/KATEGORIEN]"_s, dao::dbOpenForwardOnly);
    for (const dao::Recordset& row = *categories; !row.Eof(); categories->MoveNext()) {
        const Variant parent = row.value(u"Parent");
        result.categories[row.value(u"Kategorie-Schlüssel").toLong()] = {
            row.value(u"Kategoriename").toText(), parent.isNull() ? 0 : parent.toLong(), row.value(u"Order").toLong(),
            row.value(u"Aktiv").toBoolean(), hasChanged(row)};
    }
    return result;
}

/// All but the assignments and the categories.
QByteArray otherTables(const QByteArray& content) {
    QByteArrayList lines = content.split('\n');
    lines.removeIf(
        [](const QByteArray& line) { return line.startsWith("ARTKAT: ") || line.startsWith("ARTIKEL/KATEGORIEN: "); });
    return lines.join('\n');
}

bool matches(const QString& text, const QString& expression) {
    return QRegularExpression(QRegularExpression::anchoredPattern(expression)).match(text).hasMatch();
}

QStringList sorted(QStringList lines) {
    lines.sort();
    return lines;
}

QStringList proceduresOf(const QList<ErrorReport>& reports) {
    QStringList result;
    for (const ErrorReport& report : reports)
        result.append(report.code == 0 ? report.procName : QString::number(report.code));
    return result;
}

QString lineOf(const QList<ErrorReport>& reports) {
    QStringList result;
    for (const ErrorReport& report : reports)
        result.append(u"%1 %2 %3"_s.arg(report.code).arg(report.procName).arg(report.number));
    return result.join(u", ");
}

} // namespace

/// How the command looked when it was over.
struct CommandRun::Ended {
    QList<ErrorReport> reports;
    bool edited = false;
    int levels = 0;
    bool beforeTransaction = false;
    bool behindCommit = false; ///< the statement that failed
    bool readAhead = false;    ///< …, of rows that are asked for once more then
    bool givenUp = false;      ///< … made the engine give the transaction up
    QStringList listBefore, list, listStored;
    bool keptRows = true;
    bool treeIsTrue = true;
    bool treeAsked = false;            ///< a failure of the tree's read was put to the user
    qint64 points = 0, statements = 0; ///< that it passed
    QByteArray content;
    bool engineFails = false; ///< the fault is one of the files: what the engine makes of it is its own affair
    dao::StatementFault fault = {};

    /// The procedures, first the read of the tree where it asked the user instead.
    QStringList reporters() const {
        return (treeAsked ? QStringList{u"ReportTreeError"_s} : QStringList()) + proceduresOf(reports);
    }
    QString reporter() const { return reporters().value(0); }
};

CommandRun::CommandRun(const BrowserCommand& command, JournalMode mode)
    : command_(command)
    , file_(FaultFile::CopyOf{CatalogueFixture(command.picture).file()}, mode)
    , before_(file_.content())
    , rowsBefore_(rowsOf(file_.path()))
    , findings_(findingsOf(file_.path())) {
    FaultReport report;
    file_.restore();
    const Ended ended = runOnce(report, Kind::None, {}, {});
    points_ = ended.points;
    statements_ = ended.statements;
    findings_ |= findingsOf(file_.path());
    judge(report, ended);
    after_ = ended.content;
    EXPECT_STREQ(report.complaint, "") << command.name;
    EXPECT_EQ(after_ != before_, command.changes) << command.name;
}

qint64 CommandRun::fileFaults(FileFault fault, PointRange range) {
    return runFileFaults(fault, faultCommand(Kind::File, fault, {}), range);
}

qint64 CommandRun::statementFaults(dao::StatementFault fault, PointRange range) {
    return runStatementFaults(fault, faultCommand(Kind::Statement, {}, fault), range);
}

FaultCommand CommandRun::faultCommand(Kind kind, FileFault fileFault, dao::StatementFault statementFault) {
    FaultCommand result;
    result.prepare = [this] { file_.restore(); };
    result.run = [=, this](FaultReport& report) { judge(report, runOnce(report, kind, fileFault, statementFault)); };
    result.check = [this](const FaultReport& report) { check(report); };
    return result;
}

// The points are those of the command alone: the panes are read and the host ends without any.
CommandRun::Ended CommandRun::runOnce(FaultReport& report, Kind kind, FileFault fileFault,
                                      dao::StatementFault statementFault) const {
    Ended ended;
    FaultVfs::disarm();
    dao::FaultPoints::disarm();
    {
        ScriptedWorld world;
        CommandHost host(world, file_.path(), {.busyTimeoutMilliseconds = 0, .vfs = FaultVfs::name});
        if (!testsOnServer()) // so that pages are written before the commit
            host.database().executeNative(u"PRAGMA cache_size=4"_s);
        command_.screen(host);
        ended.listBefore = host.listRows();
        const Ref<ListItem> first = ended.listBefore.isEmpty() ? Ref<ListItem>() : host.row(1);

        const FailingStatement failing;
        FaultVfs::arm(fileFault, kind == Kind::File ? report.point : never);
        if (kind == Kind::Statement) dao::FaultPoints::arm(statementFault, report.point);
        command_.run(host);
        report.fired = FaultVfs::hasFired() || dao::FaultPoints::hasFired();
        ended.points = FaultVfs::reached();
        ended.statements = failing.count();
        FaultVfs::disarm();
        dao::FaultPoints::disarm();

        ended.beforeTransaction = failing.isBeforeTransaction();
        ended.behindCommit = failing.isBehindCommit();
        ended.readAhead = testsOnServer() && failing.isReadAhead();
        ended.givenUp = kind == Kind::Statement && failing.givesUp(statementFault);
        ended.engineFails = kind == Kind::File;
        ended.fault = statementFault;
        ended.reports = host.reports();
        ended.edited = host.browser().Edited();
        ended.levels = host.workspace().transactionDepth();
        ended.list = host.listRows();
        ended.keptRows = ended.list.isEmpty() ? !first : host.row(1) == first;
        ended.treeIsTrue = host.treeRows() == host.storedTreeRows(file_.path());
        ended.treeAsked = std::ranges::any_of(
            world.user.shown, [](const MessageBox& box) { return box.flags == (vbYesNo | vbCritical); });
        ended.listStored = host.storedListRows(file_.path());
    }
    ended.content = file_.content();
    return ended;
}

void CommandRun::judge(FaultReport& report, const Ended& ended) const {
    const auto complainIf = [&](bool isWrong, const QString& what) {
        if (isWrong) report.complain((what + u" | "_s + lineOf(ended.reports)).toStdString());
    };
    const QString reporter = ended.reporter();
    const bool isKnown = reporter.isEmpty() || command_.failures.contains(reporter);
    complainIf(!isKnown, u"who reports"_s);
    // A server sets a counter right that others have overtaken, and the row is stored then.
    const bool isTriedAgain = testsOnServer() && ended.fault == dao::StatementFault::Constraint;
    const bool maySilent =
        ended.engineFails || isTriedAgain || ended.readAhead || (command_.silentBefore && ended.beforeTransaction);
    complainIf(report.fired && reporter.isEmpty() && !maySilent, u"the failure was not reported"_s);
    const Outcome outcome = reporter.isEmpty() ? command_.done : command_.failures.value(reporter);

    QString others;
    for (const QString& other : ended.reporters().mid(1))
        others += other + u' ';
    const bool isLost = !ended.engineFails && ended.fault == dao::StatementFault::LostConnection;
    const bool givenUp = isLost || (ended.engineFails ? matches(others, outcome.thenGivenUp) : ended.givenUp);
    const QString& expected = isLost ? outcome.thenLost : givenUp ? outcome.thenGivenUp : outcome.then;
    complainIf(!matches(others, expected), u"further reports"_s);

    if (!reporter.isEmpty() && !ended.engineFails) {
        complainIf(!ended.treeAsked && ended.reports.first().number != errorNumber(ended.fault), u"number"_s);
        complainIf(!outcome.eachRow && ended.behindCommit != outcome.behindCommit, u"reporter and statement"_s);
    }
    complainIf(ended.levels != (reporter.isEmpty() ? command_.levelsLeftOpen : 0), u"levels of transaction"_s);
    Outcome left = outcome;
    const bool endsAtOnce = outcome.stored == Stored::Before && outcome.list == ListShows::AsBefore;
    if (givenUp && !endsAtOnce && !reporter.isEmpty() && !outcome.behindCommit && !outcome.eachRow)
        left = command_.undone(isLost);
    if (isLost && outcome.list == ListShows::RereadOrNothing) left.list = ListShows::Nothing;
    complainIf(!isStored(left.stored, ended), u"rows"_s);
    // Where every row is stored by itself, the one behind the last told decides.
    if (outcome.eachRow && isLost) left.edited = outcome.edited && others.isEmpty();
    complainIf(ended.edited != left.edited, u"Edited"_s);
    complainIf(!isShown(left.list, ended), u"list: "_s + ended.list.join(u", "));
    complainIf(left.treeIsTrue && !ended.treeIsTrue, u"tree"_s);
}

bool CommandRun::isStored(Stored stored, const Ended& ended) const {
    switch (stored) {
    case Stored::Before: return ended.content == before_;
    case Stored::After:
        return after_.isNull() || ended.content == after_; // null in the run that shows what comes of it
    case Stored::Part: return isPart(ended.content, ended.reporter());
    }
    return false;
}

bool CommandRun::isPart(const QByteArray& content, const QString& procedure) const {
    return otherTables(content) == otherTables(before_) &&
           command_.parts(rowsBefore_, procedure).contains(rowsOf(file_.path()));
}

bool CommandRun::isShown(ListShows list, const Ended& ended) {
    const bool isReread = (!ended.keptRows || ended.list.isEmpty()) && sorted(ended.list) == sorted(ended.listStored);
    switch (list) {
    case ListShows::AsBefore: return ended.keptRows && ended.list == ended.listBefore;
    case ListShows::Reread: return isReread;
    case ListShows::Nothing: return ended.list.isEmpty();
    case ListShows::Anything: return true;
    case ListShows::RereadOrNothing: return isReread || ended.list.isEmpty();
    }
    return false;
}

void CommandRun::check(const FaultReport& report) const {
    const testing::ScopedTrace trace(__FILE__, __LINE__,
                                     testing::Message() << command_.name << ", point " << report.point);
    if (report.killed) {
        const QByteArray content = file_.content();
        const bool isBetween = !command_.oneTransaction && isPart(content, {});
        EXPECT_TRUE(content == before_ || content == after_ || isBetween) << content.left(2000).toStdString();
        EXPECT_EQ(findingsOf(file_.path()) - findings_, QSet<QString>());
    }
    file_.expectSound();
}

} // namespace mkl
