// Sites that were lost, and catalogues that come from a backup, as docs/server.md tells administrators.
#include "Sites.h"
#include "catalogue/CatalogueReplica.h"
#include "catalogue/CatalogueReplication.h"
#include "support/DocsPage.h"
#include "support/Printing.h"
#include "support/TlsServer.h"

#include <QTemporaryDir>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

const QStringList rows = {
    u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], Kategoriename, [Order]) VALUES (11, 'K', 1)"_s,
    u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order]) VALUES (1, 11, 1)"_s,
    u"INSERT INTO [ARTIKEL/PREISE] ([Preislisten-Schlüssel], [Artikel-Schlüssel]) VALUES (1, 1)"_s};

const QString newAssignment = u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel]) VALUES (2, 11)"_s;

QByteArray highestAssignment(const Site& site) {
    return site.native(u"SELECT max(\"ArtKatID\") FROM \"ARTKAT\""_s);
}

/// Lines of the page, on the machine of that site and as its administrator.
void runThere(Site& site, const QString& folder, const QString& block) {
    const QString place = site.url().section(u"host="_s, 1);
    runShell(folder,
             u"set -e; export PATH=/usr/lib/postgresql/15/bin:$PATH PGUSER=mkl PGHOST=%1; ln -sfn " MKL_SOURCE_DIR
             "/scripts scripts; %2"_s.arg(place, block));
}

/// Tables and rows of one site as a backup gives them to another one.
void restore(Site& from, Site& to) {
    const QTemporaryDir folder;
    const QStringList blocks = codeBlocksOf(u"server.md"_s, u"Sichern und zurückholen"_s);
    runThere(from, folder.path(), blocks.value(0));
    QStringList lines = blocks.value(1).split(u'\n');
    lines.removeIf([](const QString& line) { return line.startsWith(u"mklart "); }); // there is no line by TCP here
    runThere(to, folder.path(), lines.join(u'\n'));
}

void prepare(Site& site, Long digit, const QStringList& peers, bool sameRows = false) {
    prepareReplication(*site.open(), {digit, site.url(), peers, sameRows});
}

} // namespace

TEST(Restoring, aBackupBringsDigitAndCountersBackAndIsPreparedAnew) {
    Site lost, restored;
    prepare(lost, 3, {});
    lost.execute(rows + QStringList{newAssignment});
    ASSERT_EQ(highestAssignment(lost), "23");
    restore(lost, restored);
    EXPECT_EQ(replicaDigit(*restored.open()), 3);
    EXPECT_TRUE(replicationStatus(*restored.open()).node.isEmpty());
    prepare(restored, 3, {});
    EXPECT_EQ(replicationStatus(*restored.open()).node, u"mkl_3"_s);
    restored.execute({newAssignment});
    EXPECT_EQ(highestAssignment(restored), "33");
}

TEST(Restoring, aLostSiteBeginsEmptyAndTakesTheRowsOfAnother) {
    Sites sites(2, rows);
    sites[1].execute({newAssignment});
    ASSERT_TRUE(sites.becomeEqual());
    sites[1].server().kill();

    const QTemporaryDir folder;
    const QString lines = codeBlocksOf(u"server.md"_s, u"Sichern und zurückholen"_s).value(2);
    ASSERT_TRUE(eventually([&] { // the server has seen that nobody takes from it
        return sites[0].native(u"SELECT count(*) FROM pg_replication_slots WHERE active"_s) == "0";
    }));
    runThere(sites[0], folder.path(), lines);
    EXPECT_TRUE(replicationStatus(*sites[0].open()).isWorking()) << "alone again";

    Site anew;
    prepare(anew, 2, {sites[0].url()});
    prepare(sites[0], 1, {anew.url()});
    const auto areEqual = [&] { return anew.rows() == sites[0].rows(); };
    EXPECT_TRUE(eventually(areEqual));
    anew.execute({newAssignment});
    EXPECT_EQ(highestAssignment(anew), "22") << "behind the rows that it took";
    EXPECT_TRUE(eventually(areEqual));
}

TEST(Restoring, equalRowsAreVouchedForWhereBothCameFromOneBackup) {
    Site first, second;
    first.execute(rows);
    restore(first, second);
    ASSERT_EQ(first.rows(), second.rows());
    prepare(first, 1, {});
    EXPECT_THROW(prepare(second, 2, {first.url()}), RunTimeError);
    prepare(second, 2, {first.url()}, true);
    prepare(first, 1, {second.url()});
    const auto areEqual = [&] { return first.rows() == second.rows(); };
    const auto isWorking = [](const Site& site) { return replicationStatus(*site.open()).isWorking(); };
    ASSERT_TRUE(eventually([&] { return isWorking(first) && isWorking(second); }));
    EXPECT_TRUE(areEqual()) << "nothing came twice";

    first.execute({newAssignment, u"UPDATE [ARTIKEL/PREISE] SET Preis=5"_s});
    second.execute({newAssignment, u"UPDATE [ARTIKEL/KATEGORIEN] SET Kategoriename='Neu'"_s});
    EXPECT_TRUE(eventually(areEqual));
    EXPECT_EQ(second.native(u"SELECT string_agg(\"ArtKatID\"::text, ',' ORDER BY \"ArtKatID\") FROM \"ARTKAT\""_s),
              "1,11,12");
    EXPECT_EQ(second.native(u"SELECT \"Preis\" FROM \"ARTIKEL/PREISE\""_s), "5");
    EXPECT_EQ(first.native(u"SELECT \"Kategoriename\" FROM \"ARTIKEL/KATEGORIEN\""_s), "Neu");
}
