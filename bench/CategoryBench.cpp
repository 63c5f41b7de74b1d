// Commands over many categories, beside the plain C interface that runs the same statements and one read of the tree.
#include "bench/BrowserOnForest.h"
#include "bench/Row.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Runs = 5;
constexpr int Subtree = 10'000;
constexpr int Level = 5'000;
constexpr int Root = BrowserOnForest::Root;
constexpr int LevelParent = BrowserOnForest::LevelParent;
constexpr int FirstOfSubtree = BrowserOnForest::FirstOfSubtree;
constexpr int FirstOfLevel = BrowserOnForest::FirstOfLevel;

} // namespace

Result deleteTreeRow(Engine engine) {
    BrowserOnForest forest(engine, Subtree, Level);
    const YesSayer yes;
    std::vector<double> ours, raw, reads;
    for (int run = 0; run < Runs; ++run) {
        forest.select(Root);
        ours.push_back(medianSeconds(1, [&] { forest.hub().categoryEditing->kTV_Delete(); }));
        if (forest.browser.CategoryTreeView()->Nodes().Count() != 1 + Level) qFatal("the subtree is still there");
        reads.push_back(forest.readSeconds());
        const auto restore = [&] {
            forest.insert(Root, 1, u"NULL"_s, 1);
            forest.insertSubtree();
        };
        restore();
        const std::vector<int> keys = forest.keys(
            u"SELECT \"Kategorie-Schlüssel\" FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = %1 OR "
            "\"Kategorie-Schlüssel\" BETWEEN %2 AND %3"_s.arg(Root)
                .arg(FirstOfSubtree)
                .arg(FirstOfLevel - 1));
        if (keys.size() != std::size_t(Subtree)) qFatal("the subtree is incomplete");
        raw.push_back(medianSeconds(1, [&] {
            forest.runForKeys(keys, u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = ?1"_s);
        }));
        restore();
        forest.readSeconds();
    }
    Result result;
    result.work = u"deleting a subtree of 10,000 categories beside a level of 5,000"_s;
    result.unit = u"s"_s;
    result.goal = 3;
    result.ours = median(ours);
    result.baselines = {{forest.raw.name(), median(raw)}, {u"X_PopulateTV"_s, median(reads)}};
    return result;
}

Result sortLevelRow(Engine engine) {
    BrowserOnForest forest(engine, Subtree, Level);
    const YesSayer yes;
    std::vector<double> ours, raw, reads;
    for (int run = 0; run < Runs; ++run) {
        forest.select(FirstOfLevel + 17);
        const bool descending = run % 2;
        ours.push_back(medianSeconds(1, [&] { forest.hub().categoryOrder->Renumber(descending); }));
        reads.push_back(forest.readSeconds());
        raw.push_back(medianSeconds(1, [&] {
            const std::vector<int> keys = forest.keys(
                u"SELECT \"Kategorie-Schlüssel\" FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Parent\" = %1 ORDER BY \"Kategoriename\""_s
                    .arg(LevelParent));
            forest.runForKeys(keys, u"UPDATE \"ARTIKEL/KATEGORIEN\" SET \"Order\" = ?2, \"LetzteÄnderung\" = "
                                    "'2026-11-21 12:00:00' WHERE \"Kategorie-Schlüssel\" = ?1"_s);
        }));
    }
    Result result;
    result.work = u"sorting a level of 5,000 categories beside a subtree of 10,000"_s;
    result.unit = u"s"_s;
    result.goal = 3;
    result.ours = median(ours);
    result.baselines = {{forest.raw.name(), median(raw)}, {u"X_PopulateTV"_s, median(reads)}};
    return result;
}

} // namespace bench
