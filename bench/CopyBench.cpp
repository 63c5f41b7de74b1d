// A copy of a large subtree with its articles, beside the plain C interface that makes the same rows.
#include "bench/BrowserOnForest.h"
#include "bench/Row.h"
#include "tests/support/FixedReplica.h"

#include <QHash>

namespace bench {

namespace {

constexpr int Runs = 5;
constexpr int Subtree = 5'000;
constexpr int Articles = 4; ///< of each category
constexpr int Source = BrowserOnForest::Root;
constexpr int Target = BrowserOnForest::LevelParent;
constexpr int LastKey = 9'999'993; ///< what is copied gets keys behind it

/// The same inserts, in the same sequence, in one transaction; on a server each category is asked for those below it as
/// well, which is a way there and back.
void copyRaw(const BrowserOnForest& forest) {
    const std::vector<int> keys =
        forest.keys(u"SELECT \"Kategorie-Schlüssel\" FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = %1 OR "
                    "\"Kategorie-Schlüssel\" BETWEEN %2 AND %3 ORDER BY \"Kategorie-Schlüssel\""_s.arg(Source)
                        .arg(BrowserOnForest::FirstOfSubtree)
                        .arg(BrowserOnForest::FirstOfLevel - 1));
    if (keys.size() != std::size_t(Subtree)) qFatal("the subtree is incomplete");
    forest.raw.begin();
    const auto parentOf =
        forest.raw.prepare(u"SELECT \"Parent\" FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = ?1"_s);
    const auto category = forest.raw.prepare(
        u"INSERT INTO \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\", \"Absender-Schlüssel\", \"Kategoriename\", "
        "\"Bezeichnung\", \"LetzteÄnderung\", \"Parent\", \"Order\", \"Aktiv\") SELECT ?1, "
        "\"Absender-Schlüssel\", \"Kategoriename\", \"Bezeichnung\", '2026-11-21 12:00:00', ?3, \"Order\", -1 "
        "FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = ?2"_s);
    const auto articles = forest.raw.prepare(
        u"INSERT INTO \"ARTKAT\" (\"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", \"Order\", \"LetzteÄnderung\") "
        "SELECT \"Artikel-Schlüssel\", ?1, \"Order\", '2026-11-21 12:00:00' FROM \"ARTKAT\" WHERE "
        "\"Kategorie-Schlüssel\" = ?2"_s);
    const auto below =
        forest.raw.prepare(u"SELECT * FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Parent\" = ?1 ORDER BY \"Order\""_s);
    QHash<int, int> copies;
    int next = LastKey;
    for (const int key : keys) {
        parentOf->bind(1, key);
        parentOf->step();
        const int parent = key == Source ? Target : copies.value(parentOf->integer(0));
        parentOf->reset();
        copies[key] = next += 10;
        category->run(next, key, parent);
        articles->run(next, key);
        if (forest.engine() == Engine::Server) below->run(key);
    }
    forest.raw.commit();
}

void checkAndDelete(const BrowserOnForest& forest) {
    const auto count = [&](const char* table) {
        const QString query = u"SELECT count(*) FROM \"%1\" WHERE \"Kategorie-Schlüssel\" > %2"_s.arg(
            QString::fromLatin1(table), QString::number(LastKey));
        return forest.keys(query).front();
    };
    if (count("ARTIKEL/KATEGORIEN") != Subtree || count("ARTKAT") != Subtree * Articles)
        qFatal("the copy is incomplete");
    forest.exec(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" > %1;"
                "DELETE FROM \"ARTKAT\" WHERE \"Kategorie-Schlüssel\" > %1"_s.arg(LastKey));
}

} // namespace

Result copyRow(Engine engine) {
    BrowserOnForest forest(engine, Subtree, 1);
    forest.insert(LastKey, 1, u"NULL"_s, 2);
    forest.exec(
        u"INSERT INTO \"ARTKAT\" (\"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", \"Order\") SELECT n.column1, "
        "k.\"Kategorie-Schlüssel\", n.column1 FROM (VALUES (1), (2), (3), (4)) n, \"ARTIKEL/KATEGORIEN\" k WHERE "
        "k.\"Kategorie-Schlüssel\" = %1 OR k.\"Kategorie-Schlüssel\" BETWEEN %2 AND %3"_s.arg(Source)
            .arg(BrowserOnForest::FirstOfSubtree)
            .arg(BrowserOnForest::FirstOfLevel - 1));
    forest.browser.setHelper(mkl::makeRef<mkl::FixedReplica>(LastKey % 10));
    forest.browser.Populate();
    const YesSayer yes;
    const mkl::NodeCollection& nodes = forest.browser.CategoryTreeView()->Nodes();
    const auto source = nodes.Item(u"A-%1"_s.arg(Source));
    const auto target = nodes.Item(u"A-%1"_s.arg(Target));
    std::vector<double> ours, raw;
    for (int run = 0; run < Runs; ++run) {
        ours.push_back(medianSeconds(1, [&] { forest.hub().categoryTransfer->TVDragCategory_Copy(*source, *target); }));
        checkAndDelete(forest);
        raw.push_back(medianSeconds(1, [&] { copyRaw(forest); }));
        checkAndDelete(forest);
    }
    Result result;
    result.work = u"copying a subtree of 5,000 categories with 20,000 assignments"_s;
    result.unit = u"s"_s;
    result.goal = 3;
    result.ours = median(ours);
    result.baselines = {{forest.raw.name() + u", the same inserts"_s, median(raw)}};
    return result;
}

} // namespace bench
