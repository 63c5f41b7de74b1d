#include "support/PostgresServer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <QTemporaryDir>
#include <libpq-fe.h>
#include <stdexcept>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr const char* serverUser = "postgres";
constexpr int patience = 60'000;

QString binary(const QString& name) {
    for (const QString& folder : {u"/usr/lib/postgresql/15/bin"_s, u"/usr/bin"_s, u"/usr/local/bin"_s})
        if (QFile::exists(folder + u'/' + name)) return folder + u'/' + name;
    throw std::runtime_error("no PostgreSQL server is installed");
}

// The server refuses to run as root; as somebody else it belongs to whoever runs the tests.
QStringList asServerUser(const QStringList& command) {
    QStringList result{u"setpriv"_s, u"--pdeathsig=QUIT"_s};
    if (geteuid() == 0) result += {u"--reuid=postgres"_s, u"--regid=postgres"_s, u"--clear-groups"_s};
    return result + command;
}

// Only the time of day is another one: intervals stay what they are.
QStringList wrongClock(int ahead) {
    for (const QString& folder : QDir(u"/usr/lib"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString library = u"/usr/lib/%1/faketime/libfaketime.so.1"_s.arg(folder);
        if (QFile::exists(library))
            return {u"env"_s, u"LD_PRELOAD="_s + library, u"FAKETIME=%1%2"_s.arg(ahead < 0 ? u""_s : u"+"_s).arg(ahead),
                    u"FAKETIME_DONT_FAKE_MONOTONIC=1"_s, u"DONT_FAKE_MONOTONIC=1"_s};
    }
    throw std::runtime_error("libfaketime is not installed");
}

void run(QProcess& process, const QStringList& command) {
    process.setWorkingDirectory(u"/"_s);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(command.first(), command.mid(1));
    if (!process.waitForStarted(patience)) throw std::runtime_error("cannot start " + command.join(u' ').toStdString());
}

QByteArray runToEnd(const QStringList& command) {
    QProcess process;
    run(process, command);
    const bool ended = process.waitForFinished(patience);
    QByteArray said = process.readAll();
    if (!ended || process.exitCode() != 0) throw std::runtime_error(said.toStdString());
    return said;
}

const QSet<QByteArray>& keywords() {
    static const QSet<QByteArray> words = {
        "CREATE",      "TABLE",   "INSERT",  "INTO",       "VALUES",   "INTEGER",   "PRIMARY", "KEY",
        "TEXT",        "NULL",    "NOT",     "UNIQUE",     "INDEX",    "ON",        "DEFAULT", "CHECK",
        "REFERENCES",  "FOREIGN", "DELETE",  "UPDATE",     "SET",      "FROM",      "WHERE",   "SELECT",
        "AND",         "OR",      "YESNO",   "DATETIME",   "CURRENCY", "DOUBLE",    "BLOB",    "BYTE",
        "SMALLINT",    "REAL",    "CASCADE", "ALTER",      "ADD",      "COLUMN",    "DROP",    "AS",
        "GENERATED",   "ALWAYS",  "BY",      "IDENTITY",   "VARCHAR",  "STORED",    "IS",      "IN",
        "DESC",        "BEGIN",   "COMMIT",  "ROLLBACK",   "WITH",     "RECURSIVE", "UNION",   "ALL",
        "LIMIT",       "VARIANT", "ORDER",   "CONSTRAINT", "count",    "max",       "min",     "sum",
        "CONCAT_ROWS", "OLD",     "NEW",     "RENAME",     "TO",       "CASE",      "WHEN",    "THEN",
        "ELSE",        "END",     "INT",     "coalesce",   "ifnull",   "NUMERIC",   "abs",     "length"};
    return words;
}

QString withQuotedNames(const QString& native) {
    static const QRegularExpression token(
        u"'(?:[^']|'')*'|\"(?:[^\"]|\"\")*\"|(?<![\\p{N}\\p{L}])[\\p{L}_][\\p{L}\\p{N}_]*"_s);
    QString result;
    qsizetype end = 0;
    for (auto matches = token.globalMatch(native); matches.hasNext();) {
        const auto match = matches.next();
        const QString text = match.captured();
        result += native.sliced(end, match.capturedStart() - end);
        end = match.capturedEnd();
        const bool isWord = text[0] != u'\'' && text[0] != u'"';
        result += isWord && !keywords().contains(text.toUtf8()) ? u'"' + text + u'"' : text;
    }
    return result + native.sliced(end);
}

} // namespace

bool testsOnServer() {
    return qEnvironmentVariable("MKL_TEST_ENGINE") == u"postgres";
}

struct PostgresServer::Data {
    QTemporaryDir folder{u"/tmp/mklpgXXXXXX"_s};
    QStringList settings;
    QStringList environment;
    QProcess server;
    QStringList free;
    int made = 0;

    QString logFile() const { return folder.filePath(u"log"_s); }
    QByteArray log() const {
        QFile file(logFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

PostgresServer& PostgresServer::instance() {
    static PostgresServer server;
    return server;
}

std::function<void(const QString&)>& PostgresServer::preparation() {
    static std::function<void(const QString&)> prepare;
    return prepare;
}

PostgresServer::PostgresServer(const QStringList& settings, int clockAhead)
    : d_(std::make_unique<Data>()) {
    d_->settings = settings;
    if (clockAhead != 0) d_->environment = wrongClock(clockAhead);
    if (geteuid() == 0) runToEnd({u"chown"_s, QString::fromLatin1(serverUser), d_->folder.path()});
    runToEnd(asServerUser({binary(u"initdb"_s), u"-D"_s, d_->folder.filePath(u"data"_s), u"-U"_s, u"mkl"_s,
                           u"--auth-local=trust"_s, u"--auth-host=reject"_s, u"--no-sync"_s, u"-E"_s, u"UTF8"_s,
                           u"--locale=C.UTF-8"_s}));
    start();
}

PostgresServer::~PostgresServer() {
    stop();
    if (geteuid() == 0) QProcess::execute(u"rm"_s, {u"-rf"_s, d_->folder.path()});
}

void PostgresServer::launch() {
    QStringList settings{u"listen_addresses="_s,
                         u"unix_socket_directories="_s + d_->folder.path(),
                         u"fsync=off"_s,
                         u"shared_buffers=32MB"_s,
                         u"max_connections=100"_s,
                         u"autovacuum=off"_s,
                         u"log_min_messages=fatal"_s};
    QStringList command = d_->environment + QStringList{binary(u"postgres"_s), u"-D"_s, d_->folder.filePath(u"data"_s)};
    for (const QString& setting : settings + d_->settings)
        command += {u"-c"_s, setting};
    // Not into a pipe: nobody reads it while a test runs, and a full one would stop the server.
    d_->server.setStandardOutputFile(d_->logFile(), QIODevice::Append);
    run(d_->server, asServerUser(command));
}

void PostgresServer::start() {
    launch();
    const QByteArray url = urlOf("postgres").toUtf8();
    QDeadlineTimer patient(patience);
    while (PQping(url.constData()) != PQPING_OK) {
        if (!d_->server.waitForFinished(10)) continue;
        // After a kill the last of its processes may still hold the memory that they shared.
        if (patient.hasExpired()) throw std::runtime_error(d_->log().toStdString());
        launch();
    }
}

void PostgresServer::kill() {
    d_->server.kill();
    d_->server.waitForFinished(patience);
}

void PostgresServer::stop() {
    if (d_->server.state() == QProcess::NotRunning) return;
    QProcess::execute(u"kill"_s, {u"-INT"_s, QString::number(d_->server.processId())});
    d_->server.waitForFinished(patience);
}

QString PostgresServer::urlOf(const QByteArray& database) const {
    const QStringList ports = d_->settings.filter(u"port="_s);
    return u"postgresql:///"_s + QString::fromLatin1(database) + u"?user=mkl&host="_s + d_->folder.path() +
           (ports.isEmpty() ? QString() : u'&' + ports.first());
}

QString PostgresServer::takeDatabase() {
    if (!d_->free.isEmpty()) return d_->free.takeLast();
    const QByteArray name = "t" + QByteArray::number(++d_->made);
    runOnServer(urlOf("postgres"), "CREATE DATABASE " + name);
    if (preparation()) preparation()(urlOf(name));
    runOnServer(urlOf(name),
                "CREATE FUNCTION mkl.row_text(text, anyelement) RETURNS text LANGUAGE sql AS "
                "$$ SELECT coalesce($1 || ',', '') || $2::text $$;"
                "CREATE AGGREGATE mkl.concat_rows(anyelement) (SFUNC = mkl.row_text, STYPE = text);"
                "CREATE FUNCTION mkl.ifnull(text, text) RETURNS text LANGUAGE sql AS $$ SELECT coalesce($1, $2) $$");
    return urlOf(name);
}

void PostgresServer::returnDatabase(const QString& url) {
    runOnServer(url, "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = current_database() AND "
                     "pid <> pg_backend_pid(); DROP SCHEMA public CASCADE; CREATE SCHEMA public; "
                     "UPDATE mkl.local SET number = 0");
    d_->free.append(url);
}

bool PostgresServer::knows(const QString& setting) {
    static const QByteArray all = runToEnd(asServerUser({binary(u"postgres"_s), u"--describe-config"_s}));
    return ('\n' + all).contains('\n' + setting.toLatin1() + '\t');
}

void PostgresServer::copy(const QString& from, const QString& to) {
    QProcess dump, restore;
    dump.setStandardOutputProcess(&restore);
    restore.setProcessChannelMode(QProcess::MergedChannels);
    dump.start(binary(u"pg_dump"_s), {u"--schema=public"_s, u"--no-owner"_s, from});
    restore.start(binary(u"psql"_s), {u"-X"_s, u"-q"_s, u"-d"_s, to});
    const bool ended = dump.waitForFinished(patience) && restore.waitForFinished(patience);
    if (!ended || dump.exitCode() != 0 || restore.exitCode() != 0)
        throw std::runtime_error((dump.readAllStandardError() + restore.readAll()).toStdString());
}

QByteArray runOnServer(const QString& url, const QByteArray& native) {
    const std::unique_ptr<PGconn, void (*)(PGconn*)> connection(PQconnectdb(url.toUtf8().constData()), &PQfinish);
    PQsetNoticeReceiver(
        connection.get(), [](void*, const PGresult*) {}, nullptr);
    PQclear(PQexec(connection.get(), "SET search_path = public, mkl"));
    const std::unique_ptr<PGresult, void (*)(PGresult*)> result(PQexec(connection.get(), native.constData()), &PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK && status != PGRES_EMPTY_QUERY)
        throw std::runtime_error(PQerrorMessage(connection.get()));
    const bool hasValue = PQntuples(result.get()) > 0 && !PQgetisnull(result.get(), 0, 0);
    return hasValue ? QByteArray(PQgetvalue(result.get(), 0, 0)) : QByteArrayLiteral("NULL");
}

namespace {

// A column of a file needs no type.
QString withTypes(const QString& statement) {
    static const QRegularExpression bare(
        u"REFERENCES\\s+\"[^\"]+\"\\s*\\([^)]*\\)(*SKIP)(*FAIL)|([(,]\\s*\"[^\"]+\")(?=\\s*[,)])"_s),
        listed(u"\\bKEY\\s*\\(|\\bUNIQUE\\s*\\("_s);
    if (!statement.trimmed().startsWith(u"CREATE TABLE"_s)) return statement;
    const qsizetype lists = statement.indexOf(listed);
    QString columns = statement.left(lists < 0 ? statement.size() : lists);
    for (int i = 0; i < 2; ++i)
        columns.replace(bare, u"\\1 VARIANT"_s);
    return columns + (lists < 0 ? QString() : statement.mid(lists));
}

// A trigger that lets a statement fail.
QByteArray refusalText(const QRegularExpressionMatch& trigger) {
    const QString table = withQuotedNames(trigger.captured(3)), condition = withQuotedNames(trigger.captured(4));
    const QString name = trigger.captured(1);
    return u"CREATE FUNCTION public.%1() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN RAISE EXCEPTION 'no' USING "
           u"ERRCODE = "
           "'check_violation'; END $$; CREATE TRIGGER %1 BEFORE %2 ON %3 FOR EACH ROW %4 EXECUTE FUNCTION public.%1();"_s
               .arg(name, trigger.captured(2), table, condition.isEmpty() ? QString() : u"WHEN (%1)"_s.arg(condition))
               .toUtf8();
}

} // namespace

QByteArray serverText(const QByteArray& native) {
    static const QRegularExpression refusal(u"CREATE TRIGGER (\\w+) BEFORE (INSERT|UPDATE(?: OF \"[^\"]+\")?|DELETE) "
                                            u"ON (\"[^\"]+\"|\\w+) (?:WHEN (.*?) )?BEGIN SELECT "
                                            "RAISE\\(ABORT, '[^']*'\\); END;?"_s);
    static const QRegularExpression bracketed(u"\\[([\\p{L}\\p{N}_-]+)\\]"_s);
    QString text = QString::fromUtf8(native);
    text.replace(bracketed, u"\"\\1\""_s);
    QByteArray refusals;
    for (auto matches = refusal.globalMatch(text); matches.hasNext();)
        refusals += refusalText(matches.next());
    text.remove(refusal);
    static const QRegularExpression width(u"\\bTEXT\\s*\\((\\d+)\\)"_s);
    text.replace(u"INTEGER PRIMARY KEY AUTOINCREMENT"_s, u"INTEGER GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY"_s);
    text.replace(u"LONG"_s, u"INTEGER"_s);
    text.replace(width, u"VARCHAR(\\1)"_s);
    static const QRegularExpression collation(u"\\s+COLLATE\\s+(NOCASE|GERMAN|BINARY)"_s),
        concatenated(u"group_concat\\(([^()]*(?:\\([^()]*\\))?[^()]*)\\)"_s);
    text.remove(collation);
    text.remove(u"WITHOUT ROWID"_s);
    static const QRegularExpression computed(u"(\\bINTEGER)\\s+AS\\s+(\\([^()]*\\))"_s);
    text.replace(computed, u"\\1 GENERATED ALWAYS AS \\2 STORED"_s);
    static const QRegularExpression blob(u"\\bx'([0-9A-Fa-f]*)'"_s);
    text.replace(blob, u"'\\x\\1'"_s);
    text.replace(u", ',') FROM"_s, u") FROM"_s);
    text.replace(concatenated, u"CONCAT_ROWS(\\1)"_s);
    if (text.contains(u"FROM (SELECT"_s) && text.trimmed().endsWith(u')')) text += u" AS Q"_s;
    QStringList statements = withQuotedNames(text).split(u';');
    for (QString& statement : statements) {
        const bool makesTable = statement.trimmed().startsWith(u"CREATE TABLE"_s);
        statement = withTypes(statement);
        if (makesTable) statement += u";SELECT mkl_complete_tables()"_s; // before any rows come
    }
    return statements.join(u';').toUtf8() + ';' + refusals;
}

QString nativeText(const QString& native) {
    return testsOnServer() ? QString::fromUtf8(serverText(native.toUtf8())) : native;
}

} // namespace mkl
