#include "ServerCatalogue.h"

#include "catalogue/CatalogueFile.h"
#include "support/PostgresServer.h"

#include <QFile>
#include <QUrl>
#include <QUrlQuery>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

const QStringList rows = {
    u"INSERT INTO ABSENDER ([Absender-Schlüssel]) VALUES (1)"_s,
    u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], [Absender-Schlüssel], Kategoriename, [Order], Aktiv) "
    "VALUES (10, 1, 'Schrauben', 1, True)"_s,
    u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], [Absender-Schlüssel], Kategoriename, [Order], Aktiv) "
    "VALUES (20, 1, 'Werkzeug', 2, True)"_s,
    u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], [Absender-Schlüssel], Kategoriename, Parent, [Order], "
    "Aktiv) VALUES (11, 1, 'Holzschrauben', 10, 1, True)"_s,
    u"INSERT INTO ARTIKEL ([Artikel-Schlüssel], Artikelname, Aktiv, [Absender-Schlüssel]) "
    "VALUES (1, 'Senkkopf', True, 1)"_s,
    u"INSERT INTO ARTIKEL ([Artikel-Schlüssel], Artikelname, Aktiv, [Absender-Schlüssel]) "
    "VALUES (2, 'Linse', True, 1)"_s,
    u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order]) VALUES (1, 10, 1)"_s,
    u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order]) VALUES (2, 10, 2)"_s};

QString preparedDatabase() {
    PostgresServer::preparation() = [](const QString& url) { dao::DBEngine::CreateWorkspace()->OpenDatabase(url); };
    return PostgresServer::instance().takeDatabase();
}

} // namespace

ServerCatalogue::ServerCatalogue()
    : url_(preparedDatabase()) {
    createCatalogue(url_);
    const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    const Ref<dao::Database> database = openCatalogue(*workspace, url_);
    for (const QString& row : rows)
        database->Execute(row, dao::dbFailOnError);
}

ServerCatalogue::~ServerCatalogue() {
    PostgresServer::instance().returnDatabase(url_);
}

QString ServerCatalogue::url(const QString& user) const {
    return u"postgresql://%1@/%2?host=%3"_s.arg(user, database(), folder());
}

QString ServerCatalogue::folder() const {
    return QUrlQuery(QUrl(url_)).queryItemValue(u"host"_s);
}

QString ServerCatalogue::database() const {
    return QUrl(url_).path().mid(1);
}

void ServerCatalogue::addClerk(const QString& name, const QString& password) const {
    addRole(name, password, "SELECT, INSERT, UPDATE, DELETE");
}

void ServerCatalogue::addReader(const QString& name, const QString& password) const {
    addRole(name, password, "SELECT");
}

// The server of the tests lets everybody in; these roles it asks.
void ServerCatalogue::addRole(const QString& name, const QString& password, const QByteArray& rights) const {
    const QByteArray role = '"' + name.toUtf8() + '"';
    run("DO $$ BEGIN IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = '" + name.toUtf8() + "') THEN CREATE ROLE " +
        role + " LOGIN; END IF; END $$; ALTER ROLE " + role + " PASSWORD '" + password.toUtf8() +
        "'; GRANT USAGE ON SCHEMA public, mkl TO " + role + "; GRANT " + rights +
        " ON ALL TABLES IN SCHEMA public TO " + role + "; GRANT SELECT ON ALL TABLES IN SCHEMA mkl TO " + role);
    if (rights != "SELECT") run("GRANT USAGE, SELECT, UPDATE ON ALL SEQUENCES IN SCHEMA public TO " + role);
    QFile access(QString::fromUtf8(run("SHOW hba_file")));
    ASSERT_TRUE(access.open(QIODevice::ReadWrite));
    const QByteArray line = "local all " + role + " scram-sha-256\n", before = access.readAll();
    if (before.contains(line)) return;
    access.seek(0);
    access.write(line + before);
    access.close();
    const QByteArray loaded = run("SELECT pg_conf_load_time()");
    run("SELECT pg_reload_conf()");
    while (run("SELECT pg_conf_load_time()") == loaded) {
    }
}

QByteArray ServerCatalogue::run(const QByteArray& native) const {
    return runOnServer(url_, native);
}

void ServerCatalogue::rename(Long category, const QString& name) const {
    run("UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Kategoriename\" = '" + name.toUtf8() +
        "' WHERE \"Kategorie-Schlüssel\" = " + QByteArray::number(category));
}

QString ServerCatalogue::nameOf(Long category) const {
    return QString::fromUtf8(
        run("SELECT \"Kategoriename\" FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = " +
            QByteArray::number(category)));
}

} // namespace mkl
