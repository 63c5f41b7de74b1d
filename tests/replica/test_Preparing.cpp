#include "Sites.h"
#include "catalogue/CatalogueReplica.h"
#include "catalogue/CatalogueReplication.h"
#include "support/Printing.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

struct ToolResult {
    int status = -1;
    QString output, errors;

    QJsonObject json() const { return QJsonDocument::fromJson(output.toUtf8()).object(); }
};

ToolResult tool(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(MKL_BIN_DIR "/mklart"), arguments + QStringList{u"--language=de"_s});
    process.waitForFinished(120'000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

ToolResult init(const Site& site, int digit, const QStringList& more = {}) {
    return tool(QStringList{u"replica"_s, u"init"_s, site.url(), u"--digit"_s, QString::number(digit)} + more);
}

ToolResult status(const Site& site, const QStringList& more = {}) {
    return tool(QStringList{u"replica"_s, u"status"_s, site.url()} + more);
}

QString peer(const Site& site) {
    return u"--peer="_s + site.url();
}

void addAssignment(const Site& site, int key) {
    site.execute(
        {u"INSERT INTO ARTKAT ([ArtKatID], [Artikel-Schlüssel], [Kategorie-Schlüssel]) VALUES (%1, 1, 1)"_s.arg(key)});
}

QByteArray newAssignment(const Site& site) {
    site.execute({u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel]) VALUES (2, 2)"_s});
    return site.native(u"SELECT max(\"ArtKatID\") FROM \"ARTKAT\" WHERE \"Artikel-Schlüssel\" = 2"_s);
}

} // namespace

TEST(ReplicaKeys, theSmallestAboveTheHighestThatEndsInTheDigit) {
    EXPECT_EQ(nextReplicaKey({}, 0), 10);
    EXPECT_EQ(nextReplicaKey({}, 3), 13);
    EXPECT_EQ(nextReplicaKey(-50, 3), 13);
    EXPECT_EQ(nextReplicaKey(9, 9), 19);
    EXPECT_EQ(nextReplicaKey(10, 0), 20);
    EXPECT_EQ(nextReplicaKey(12, 3), 13);
    EXPECT_EQ(nextReplicaKey(13, 3), 23);
    EXPECT_EQ(nextReplicaKey(57, 3), 63);
    EXPECT_EQ(nextReplicaKey(2147483647, 5), 2147483655);
}

TEST(Preparing, aSingleSiteGivesOutKeysThatEndInItsDigit) {
    Site site;
    addAssignment(site, 57);
    const ToolResult result = init(site, 3);
    EXPECT_EQ(result.status, 0) << result.errors.toStdString();
    EXPECT_TRUE(result.output.startsWith(u"Stelle: mkl_3\nReplik-Ziffer: 3\n"
                                         "nächste Schlüssel: Zuordnung 63, Kategorie 13\n"
                                         "bei widersprüchlichen Änderungen: last_update_wins\n"))
        << result.output.toStdString();
    EXPECT_EQ(newAssignment(site), "63");
    EXPECT_EQ(newAssignment(site), "73");
    EXPECT_EQ(replicaDigit(*site.open()), 3);
}

TEST(Preparing, againItChangesNothing) {
    Site site;
    EXPECT_EQ(init(site, 3).status, 0);
    EXPECT_EQ(newAssignment(site), "13");
    site.execute({u"DELETE FROM ARTKAT"_s});
    const QString before = status(site).output;
    EXPECT_EQ(init(site, 3).output, before);
    EXPECT_EQ(newAssignment(site), "23") << "numbers of deleted rows are not given again";
}

TEST(Preparing, keysInTheFileAreCountedInHoweverTheyCame) {
    Site site;
    EXPECT_EQ(init(site, 0).status, 0);
    addAssignment(site, 4711);
    EXPECT_EQ(newAssignment(site), "4720");
}

TEST(Preparing, digitsAreTakenOnce) {
    Site first, second;
    EXPECT_EQ(init(first, 1).status, 0);
    const ToolResult taken = init(second, 1, {peer(first)});
    EXPECT_EQ(taken.status, 1);
    EXPECT_TRUE(taken.errors.contains(u"Replik-Ziffer 1 hat schon")) << taken.errors.toStdString();
    const ToolResult changed = init(first, 2);
    EXPECT_EQ(changed.status, 1);
    EXPECT_TRUE(changed.errors.contains(u"schon als 'mkl_1' eingerichtet")) << changed.errors.toStdString();
    EXPECT_EQ(init(first, 12).status, 2);
    EXPECT_EQ(tool({u"replica"_s, u"init"_s, first.url()}).status, 2);
    EXPECT_EQ(replicaDigit(*second.open()), 0);
}

TEST(Preparing, peersMustBePreparedAndRowsCompared) {
    Site first, second;
    addAssignment(first, 1);
    addAssignment(second, 2);
    const ToolResult early = init(first, 1, {peer(second)});
    EXPECT_EQ(early.status, 1);
    EXPECT_TRUE(early.errors.contains(u"noch nicht eingerichtet")) << early.errors.toStdString();
    EXPECT_EQ(init(first, 1).status, 0);
    const ToolResult both = init(second, 2, {peer(first)});
    EXPECT_EQ(both.status, 1);
    EXPECT_TRUE(both.errors.contains(u"enthalten beide schon Zeilen")) << both.errors.toStdString();
}

TEST(Preparing, statusShowsLinesOfBothDirections) {
    Sites sites(2);
    EXPECT_TRUE(sites.becomeEqual());
    const ToolResult up = status(sites[0]);
    EXPECT_EQ(up.status, 0);
    EXPECT_TRUE(up.output.contains(u"nimmt von mkl_2: replicating (mkl_1_from_2)\n")) << up.output.toStdString();
    EXPECT_TRUE(up.output.contains(u": verbunden, im Rückstand ")) << up.output.toStdString();
    const QJsonObject json = status(sites[1], {u"--json"_s}).json();
    EXPECT_EQ(json[u"node"_s], u"mkl_2"_s);
    EXPECT_EQ(json[u"replicaDigit"_s], 2);
    EXPECT_EQ(json[u"working"_s], true);
    EXPECT_EQ(json[u"nextAssignment"_s], 12);
    EXPECT_EQ(json[u"subscriptions"_s][0][u"state"_s], u"replicating"_s);
    EXPECT_EQ(json[u"consumers"_s][0][u"active"_s], true);
    sites.cut();
    const ToolResult down = status(sites[0]);
    EXPECT_EQ(down.status, 1);
    EXPECT_TRUE(down.output.contains(u"nimmt von mkl_2: disabled")) << down.output.toStdString();
    EXPECT_TRUE(down.output.contains(u": unterbrochen, im Rückstand ")) << down.output.toStdString();
}

TEST(Preparing, aServerWithoutTheSettingsIsTold) {
    Site site({u"track_commit_timestamp=off"_s, u"pglogical.conflict_resolution=apply_remote"_s});
    const ToolResult result = init(site, 1);
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(
        result.errors.contains(u"track_commit_timestamp = on; pglogical.conflict_resolution = last_update_wins\n"))
        << result.errors.toStdString();
    EXPECT_EQ(site.native(u"SELECT count(*) FROM pg_extension WHERE extname = 'pglogical'"_s), "0");
    EXPECT_EQ(status(site).status, 0);
}

TEST(Preparing, aServerThatDoesNotListTheLibraryIsTold) {
    if (!PostgresServer::knows(u"output_plugin_libraries"_s)) GTEST_SKIP() << "this version lets any library read";
    Site site({u"output_plugin_libraries=pgoutput, test_decoding"_s});
    const ToolResult result = init(site, 1);
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains(u"output_plugin_libraries = 'pgoutput, test_decoding, pglogical_output'\n"))
        << result.errors.toStdString();
    EXPECT_TRUE(status(site).output.contains(u"fehlende Einstellung des Servers: output_plugin_libraries = "));
}

TEST(Preparing, theDigitOfAPreparedSiteStaysWithItsCounters) {
    Site site;
    EXPECT_EQ(init(site, 3).status, 0);
    const ToolResult refused = tool({u"replica"_s, u"digit"_s, site.url(), u"4"_s});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.errors.contains(u"'mkl_3'") && refused.errors.contains(u"mklart replica init"))
        << refused.errors.toStdString();
    EXPECT_EQ(replicaDigit(*site.open()), 3);
    EXPECT_EQ(newAssignment(site), "13");
}

TEST(Preparing, aRestoredCatalogueIsPreparedAnew) {
    Site site;
    EXPECT_EQ(init(site, 3).status, 0);
    EXPECT_EQ(newAssignment(site), "13");
    site.native(u"SELECT pglogical.drop_node('mkl_3')"_s); // a backup does not hold it
    const ToolResult alone = status(site);
    EXPECT_EQ(alone.status, 0) << alone.errors.toStdString();
    EXPECT_TRUE(alone.output.startsWith(u"Stelle: keine\nReplik-Ziffer: 3\n")) << alone.output.toStdString();
    EXPECT_EQ(init(site, 3).status, 0);
    EXPECT_EQ(status(site).status, 0);
    EXPECT_EQ(newAssignment(site), "23");
}

TEST(Preparing, aFileIsRefused) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"a.sqlite"_s);
    createCatalogue(file);
    const ToolResult result = tool({u"replica"_s, u"init"_s, file, u"--digit=1"_s});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains(u"kein Katalog auf einem Server")) << result.errors.toStdString();
}
