// The commands on a catalogue in a database of a server.
#include "EmptyDatabase.h"
#include "Tool.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/DatabaseSource.h"
#include "support/Printing.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class Server : public testing::Test {
protected:
    QString done(const QStringList& arguments) const {
        const ToolResult result = tool.run(arguments);
        EXPECT_EQ(result.status, 0) << arguments.join(u' ').toStdString() << ": " << result.errors.toStdString();
        EXPECT_EQ(result.errors, QString());
        return result.output;
    }
    void refused(const QStringList& arguments, const QString& because) const {
        const ToolResult result = tool.run(arguments);
        EXPECT_EQ(result.status, 1) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(result.errors.startsWith(u"mklart: ") && result.errors.contains(because))
            << result.errors.toStdString();
        EXPECT_EQ(result.output, QString());
    }
    QList<QStringList> commandsThatRead(const QString& address) const {
        return {{u"check"_s, address},
                {u"info"_s, address},
                {u"tree"_s, address},
                {u"repair"_s, address},
                {u"replica"_s, u"status"_s, address},
                {u"replica"_s, u"digit"_s, address, u"3"_s},
                {u"copy"_s, address, u"neu.sqlite"_s}};
    }
    QByteArray newAssignment() const {
        done({u"sql"_s, url, u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel]) VALUES (2, 2)"_s});
        return database.native("SELECT max(\"ArtKatID\") FROM \"ARTKAT\" WHERE \"Artikel-Schlüssel\" = 2");
    }

    const EmptyDatabase database;
    const QString url = database.url();
    Tool tool;
};

/// Counts the rows of each table; does something when the first one begins.
class CountingSink final : public RowSink {
public:
    explicit CountingSink(std::function<void()> atBegin)
        : atBegin_(std::move(atBegin)) {}

    void passOverTable(const QString&) override {}
    void passOverColumn(const QString&, const QString&) override {}
    void beginTable(int table, const QList<int>&, qint64 expectedRows) override {
        table_ = catalogueTables()[table].name;
        expected[table_] = expectedRows;
        if (auto action = std::exchange(atBegin_, nullptr)) action();
    }
    void row(std::span<const Variant>) override { ++rows[table_]; }
    void endTable() override {}

    QHash<QString, qint64> rows, expected;

private:
    std::function<void()> atBegin_;
    QString table_;
};

} // namespace

TEST_F(Server, copiesFromAFileAndBack) {
    done({u"demo"_s, u"a.sqlite"_s, u"--articles=80"_s, u"--categories=20"_s});
    const QString copied = done({u"copy"_s, u"a.sqlite"_s, url});
    EXPECT_TRUE(copied.contains(u" 80 ARTIKEL\n")) << copied.toStdString();
    EXPECT_TRUE(copied.contains(u"Nach '%1' kopierte Zeilen: "_s.arg(url)));
    EXPECT_EQ(done({u"tree"_s, url}), done({u"tree"_s, u"a.sqlite"_s}));
    EXPECT_EQ(done({u"check"_s, url}), done({u"check"_s, u"a.sqlite"_s}));
    done({u"copy"_s, url, u"b.sqlite"_s});
    EXPECT_EQ(done({u"tree"_s, u"b.sqlite"_s}), done({u"tree"_s, u"a.sqlite"_s}));
    refused({u"copy"_s, u"a.sqlite"_s, url}, u"Die Datenbank '%1' enthält bereits einen Katalog mit Daten"_s.arg(url));
    refused({u"demo"_s, url}, u"ist bereits ein Katalog vorhanden"_s);
}

TEST_F(Server, infoIsThatOfTheFileWithoutASize) {
    done({u"demo"_s, u"a.sqlite"_s, u"--articles=80"_s, u"--categories=20"_s});
    done({u"copy"_s, u"a.sqlite"_s, url});
    QStringList ofFile = done({u"info"_s, u"a.sqlite"_s}).split(u'\n');
    QStringList ofServer = done({u"info"_s, url}).split(u'\n');
    EXPECT_TRUE(ofFile.takeFirst().endsWith(u" Bytes)"));
    EXPECT_EQ(ofServer.takeFirst(), url);
    EXPECT_EQ(ofServer, ofFile);
    const QJsonObject json = tool.run({u"info"_s, url, u"--json"_s}).json();
    EXPECT_TRUE(json.contains(u"bytes"_s) && json[u"bytes"_s].isNull());
    EXPECT_EQ(json[u"updatable"_s], true);
    EXPECT_EQ(json[u"rows"_s][u"ARTIKEL"_s], 80);
}

TEST_F(Server, newMakesACatalogueInAnEmptyDatabaseOnce) {
    EXPECT_TRUE(done({u"new"_s, url}).contains(url));
    EXPECT_TRUE(done({u"info"_s, url}).contains(u" 0 ARTIKEL\n"));
    EXPECT_EQ(done({u"tree"_s, url}), QString());
    done({u"check"_s, url});
    EXPECT_TRUE(done({u"repair"_s, url}).contains(u"nichts zu reparieren"));
    refused({u"new"_s, url}, u"ist bereits ein Katalog vorhanden"_s);
}

TEST_F(Server, importsAFolder) {
    EXPECT_TRUE(done({u"import"_s, testData(u"csv-small"_s), url}).contains(u"importierte Zeilen: "));
    done({u"import"_s, testData(u"csv-small"_s), u"a.sqlite"_s});
    EXPECT_EQ(done({u"tree"_s, url}), done({u"tree"_s, u"a.sqlite"_s}));
    refused({u"import"_s, testData(u"csv-small"_s), url}, u"bereits einen Katalog mit Daten"_s);
}

TEST_F(Server, runsStatements) {
    done({u"new"_s, url});
    done({u"sql"_s, url, u"INSERT INTO ARTIKEL ([Artikel-Schlüssel], [Artikelname]) VALUES (7, 'Öse')"_s});
    EXPECT_TRUE(done({u"sql"_s, url, u"SELECT [Artikelname] FROM ARTIKEL"_s}).contains(u"Öse"));
    EXPECT_TRUE(done({u"find"_s, url, u"ARTIKEL"_s, u"[Artikelname] Like 'ö*'"_s}).contains(u"Öse"));
    refused({u"sql"_s, url, u"DELETE FROM ARTIKEL"_s, u"--read-only"_s}, u"schreibgeschützt"_s);
    EXPECT_EQ(database.native("SELECT count(*) FROM \"ARTIKEL\""), "1");
}

TEST_F(Server, repairsWhatCheckFinds) {
    done({u"new"_s, url});
    for (const QString& row : {u"1, 2"_s, u"2, 1"_s}) // a ring
        done(
            {u"sql"_s, url,
             u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], [Parent], [Order]) VALUES (%1, 1)"_s.arg(row)});
    EXPECT_EQ(tool.run({u"check"_s, url}).status, 1);
    EXPECT_EQ(tool.run({u"repair"_s, url, u"--dry-run"_s}).status, 1);
    EXPECT_EQ(tool.run({u"check"_s, url}).status, 1);
    EXPECT_TRUE(done({u"repair"_s, url}).contains(u"Kategorie 1 wird Hauptkategorie"));
    done({u"check"_s, url});
}

TEST_F(Server, tellsWhereThereIsNoSuchDatabase) {
    const QString missing = PostgresServer::instance().urlOf("gibtesnicht");
    const QString because = u"Auf diesem Server gibt es keine Datenbank 'gibtesnicht'."_s;
    done({u"new"_s, u"a.sqlite"_s});
    for (const QStringList& command : commandsThatRead(missing))
        refused(command, because);
    refused({u"new"_s, missing}, because);
    refused({u"demo"_s, missing}, because);
    refused({u"sql"_s, missing, u"SELECT 1"_s}, because);
    refused({u"import"_s, testData(u"csv-small"_s), missing}, because);
    refused({u"copy"_s, u"a.sqlite"_s, missing}, because);
    EXPECT_FALSE(tool.files().contains(u"neu.sqlite"_s));
}

TEST_F(Server, tellsWhereADatabaseHoldsNoCatalogue) {
    for (const QStringList& command : commandsThatRead(url))
        refused(command, u"ABSENDER"_s);
    database.native("CREATE TABLE public.\"Kunde\" (nr integer PRIMARY KEY); INSERT INTO public.\"Kunde\" VALUES (1)");
    for (const QStringList& command : commandsThatRead(url))
        refused(command, u"ABSENDER"_s);
    EXPECT_FALSE(tool.files().contains(u"neu.sqlite"_s));
    done({u"new"_s, url}); // beside the tables of others
    done({u"check"_s, url});
    EXPECT_EQ(database.native("SELECT count(*) FROM public.\"Kunde\""), "1");
}

TEST_F(Server, aCopyIsOfOneMomentWhoeverWrites) {
    done({u"demo"_s, url, u"--articles=20"_s, u"--categories=5"_s});
    for (const bool readOnly : {false, true}) {
        const auto rowsOf = [&] { return database.native("SELECT count(*) FROM \"ARTKAT\"").toLongLong(); };
        const qint64 before = rowsOf();
        const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
        const Ref<dao::Database> source = openCatalogue(*workspace, url, {.readOnly = readOnly});
        CountingSink sink([&] {
            database.native("INSERT INTO \"ARTKAT\" (\"Artikel-Schlüssel\", \"Kategorie-Schlüssel\") VALUES (1, 1)");
        });
        DatabaseSource(*workspace, *source).readInto(sink);
        EXPECT_EQ(sink.rows[u"ARTKAT"_s], before);
        EXPECT_EQ(sink.expected[u"ARTKAT"_s], before);
        EXPECT_EQ(rowsOf(), before + 1);
        const auto now = source->OpenRecordset(u"SELECT Count(*) FROM ARTKAT"_s, dao::dbOpenSnapshot);
        EXPECT_EQ(now->value(0).toLong(), before + 1) << "the moment is over";
        EXPECT_EQ(source->queryNative(u"SHOW default_transaction_isolation"_s)[0][0], u"read committed"_s);
    }
}

TEST_F(Server, aDigitStepsTheCounter) {
    done({u"new"_s, url});
    EXPECT_EQ(newAssignment(), "1");
    EXPECT_EQ(done({u"replica"_s, u"digit"_s, url, u"3"_s}), u"Replik-Ziffer: 3\n"_s);
    EXPECT_EQ(newAssignment(), "13");
    EXPECT_EQ(newAssignment(), "23");
    done({u"replica"_s, u"digit"_s, url, u"0"_s});
    EXPECT_EQ(newAssignment(), "30");
    EXPECT_TRUE(done({u"replica"_s, u"status"_s, url}).contains(u"nächste Schlüssel: Zuordnung 40, Kategorie 10\n"));
}
