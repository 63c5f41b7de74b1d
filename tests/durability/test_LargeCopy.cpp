// A copy of 5,000 categories with 20,000 assignments that is killed in the middle.
#include "CommandHost.h"
#include "controls/Asker.h"
#include "support/CatalogueFixture.h"
#include "support/FaultFile.h"
#include "support/FixedReplica.h"

#include <gtest/gtest.h>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

constexpr Long source = 13, target = 23;

/// Category 13 with 4,999 more below it, ten to each, of four articles each; an empty category 23 beside it.
void fill(const CatalogueFixture& catalogue) {
    catalogue.run(u"BEGIN;"
                  "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 4999) "
                  "INSERT INTO \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\", \"Absender-Schlüssel\", "
                  "\"Kategoriename\", \"Parent\", \"Order\", \"Aktiv\") "
                  "SELECT 100003 + 10 * i, 1, 'Kategorie ' || i, "
                  "CASE WHEN i <= 10 THEN 13 ELSE 100003 + 10 * ((i - 1) / 10) END, (i - 1) % 10 + 1, -1 FROM n;"
                  "INSERT INTO ARTKAT (\"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", \"Order\") "
                  "SELECT a.\"Artikel-Schlüssel\", k.\"Kategorie-Schlüssel\", a.\"Artikel-Schlüssel\" FROM ARTIKEL a, "
                  "\"ARTIKEL/KATEGORIEN\" k WHERE k.\"Kategorie-Schlüssel\" > 100000;"
                  "COMMIT"_s);
}

struct Counts {
    Long categories = 0, assignments = 0;
    bool operator==(const Counts&) const = default;
};

Counts countsOf(const QString& file) {
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(file);
    const auto count = [&](const QString& table) {
        return database->OpenRecordset(u"SELECT Count(*) AS N FROM [%1]"_s.arg(table), dao::dbOpenSnapshot)
            ->value(u"N")
            .toLong();
    };
    return {count(u"ARTIKEL/KATEGORIEN"_s), count(u"ARTKAT"_s)};
}

/// Gives the key of the copy; points: calls that changed the file.
Long copyAll(const QString& file, FileFault fault, qint64 point, qint64& points) {
    ScriptedWorld world;
    CommandHost host(world, file, {.vfs = FaultVfs::name});
    host.database().executeNative(u"PRAGMA cache_size=50"_s); // so that pages are written before the commit
    host.browser().setHelper(makeRef<FixedReplica>(3));
    host.show(source);
    world.user.answers = {vbYes};
    const auto nodeOf = [&](Long category) { return host.tree().Nodes().Item(u"A-%1"_s.arg(category)); };
    const Ref<Node> node = nodeOf(source), targetNode = nodeOf(target);
    FaultVfs::arm(fault, point);
    const Long copy = host.hub().categoryTransfer->TVDragCategory_Copy(*node, *targetNode);
    points = FaultVfs::reached();
    return copy;
}

} // namespace

TEST(LargeCopy, KilledInTheMiddleLeavesNothingBehind) {
    const Counts before{5001, 20000}, after{10001, 40000};
    const CatalogueFixture catalogue(u"13 Quelle: 1 A, 2 B, 3 C, 4 D\n23 Ziel\n"_s);
    fill(catalogue);
    for (const JournalMode mode : journalModes) {
        const FaultFile file(FaultFile::CopyOf{catalogue.file()}, mode);
        ASSERT_EQ(countsOf(file.path()), before);
        qint64 points = 0;
        EXPECT_NE(copyAll(file.path(), FileFault::Kill, std::numeric_limits<qint64>::max(), points), 0);
        EXPECT_EQ(countsOf(file.path()), after);
        ASSERT_GT(points, 1000);

        qint64 killed = 0;
        FaultCommand command;
        command.prepare = [&] { file.restore(); };
        command.run = [&](FaultReport& report) {
            qint64 reached = 0;
            copyAll(file.path(), FileFault::Kill, report.point, reached);
            report.fired = FaultVfs::hasFired();
        };
        command.check = [&](const FaultReport& report) {
            killed += report.killed;
            // Towards the end the commit is done, and the engine only tidies up.
            const bool isInTheMiddle = report.killed && report.point <= points / 2;
            const Counts counts = countsOf(file.path());
            EXPECT_TRUE(counts == (isInTheMiddle ? before : after) || (report.killed && counts == before))
                << counts.categories << " categories at point " << report.point;
        };
        runFileFaults(FileFault::Kill, command, {.first = points / 5, .step = points / 5});
        EXPECT_GE(killed, 4);
    }
}
