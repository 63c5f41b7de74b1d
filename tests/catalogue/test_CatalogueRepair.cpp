#include "TestCatalogue.h"
#include "base/DateTime.h"
#include "catalogue/CatalogueRepair.h"
#include "support/CheckFindings.h"
#include "support/Printing.h"
#include "support/StandingClock.h"

#include <map>
#include <random>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

using Kind = RepairChange::Kind;

const double now = *dateFromIso(u"2026-11-22 12:00:00");

class Repair : public testing::Test {
protected:
    RepairReport repair(const RepairOptions& options = {}) {
        return repairCatalogue(catalogue.workspace(), catalogue.database(), options);
    }
    CatalogueCheck check() { return CatalogueCheck::of(catalogue.database()); }

    /// All rows of a statement, values with commas, rows with blanks between.
    QString rows(const QString& statement) {
        QStringList lines;
        const auto records = catalogue.database().OpenRecordset(statement, dao::dbOpenForwardOnly);
        for (; !records->Eof(); records->MoveNext()) {
            QStringList values;
            for (int i = 0; i < records->FieldCount(); ++i)
                values.append(records->value(i).isNull() ? u"-"_s : records->value(i).toText().replace(u' ', u'_'));
            lines.append(values.join(u','));
        }
        return lines.join(u' ');
    }
    /// Key, parent and position of all categories.
    QString categories() {
        return rows(u"SELECT [Kategorie-Schlüssel], [Parent], [Order] FROM [ARTIKEL/KATEGORIEN] "
                    "ORDER BY [Kategorie-Schlüssel]"_s);
    }
    /// Key, article, category and position of all assignments.
    QString assignments() {
        return rows(u"SELECT [ArtKatID], [Artikel-Schlüssel], [Kategorie-Schlüssel], [Order] FROM ARTKAT "
                    "ORDER BY [ArtKatID]"_s);
    }
    void execute(const QString& statement) { catalogue.database().Execute(statement, dao::dbFailOnError); }

    StandingClock clock{now};
    TestCatalogue catalogue;
};

/// "kind key: former position > position", in the order of the report.
QString summary(const RepairReport& report) {
    QStringList lines;
    for (const RepairChange& change : report.changes)
        lines.append(u"%1 %2: %3>%4"_s.arg(static_cast<int>(change.kind))
                         .arg(change.key)
                         .arg(change.formerPosition.isNull() ? u"-"_s : change.formerPosition.toText(),
                              change.position.isNull() ? u"-"_s : change.position.toText()));
    return lines.join(u", "_s);
}

} // namespace

TEST_F(Repair, aSoundCatalogueStaysAsItIs) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addCategory(23, "13", 5);
    catalogue.addArticle(1);
    catalogue.assign(1, 1, 13, 7);
    EXPECT_TRUE(repair().changes.isEmpty());
    EXPECT_EQ(categories(), u"13,-,1 23,13,5"_s);
    EXPECT_EQ(rows(u"SELECT [LetzteÄnderung] FROM [ARTIKEL/KATEGORIEN]"_s), u"- -"_s);
}

TEST_F(Repair, aClockThatIsFarOffChangesNothingButDates) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addCategory(23, "99", 1);
    catalogue.addArticle(1);
    catalogue.assign(1, 1, 13, 1);
    execute(u"UPDATE ARTKAT SET [LetzteÄnderung] = #12/31/9999 23:59:59#"_s);
    execute(u"UPDATE [ARTIKEL/KATEGORIEN] SET [LetzteÄnderung] = #1/1/1970#"_s);
    for (const QString& date : {u"1970-01-01 00:00:00"_s, u"2100-02-28 23:59:59"_s}) {
        const StandingClock wrong(*dateFromIso(date));
        EXPECT_EQ(check().danglingParents.size(), 1);
        EXPECT_EQ(repair().changes.size(), 1);
        EXPECT_FALSE(check().isDamaged());
        EXPECT_EQ(categories(), u"13,-,1 23,-,2"_s);
        const auto changed = catalogue.database().OpenRecordset(
            u"SELECT [LetzteÄnderung] FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel] = 23"_s,
            dao::dbOpenSnapshot);
        EXPECT_EQ(changed->value(0), Variant::date(*dateFromIso(date)));
        execute(u"UPDATE [ARTIKEL/KATEGORIEN] SET [Parent] = 99 WHERE [Kategorie-Schlüssel] = 23"_s);
    }
}

TEST_F(Repair, childrenOfAMissingParentGoBehindTheLastRootInTheirOrder) {
    catalogue.addCategory(13, "NULL", 4);
    catalogue.addCategory(23, "99", 2);
    catalogue.addCategory(33, "99", 1);
    catalogue.addCategory(43, "23", 1);
    EXPECT_EQ(summary(repair()), u"0 23: 2>6, 0 33: 1>5"_s);
    EXPECT_EQ(categories(), u"13,-,4 23,-,6 33,-,5 43,23,1"_s);
    EXPECT_EQ(rows(u"SELECT [Kategorie-Schlüssel] FROM [ARTIKEL/KATEGORIEN] "
                   "WHERE [LetzteÄnderung]=#2026-11-22 12:00:00# ORDER BY [Kategorie-Schlüssel]"_s),
              u"23 33"_s);
    EXPECT_FALSE(check().isDamaged());
}

TEST_F(Repair, ringsOfOneTwoAndThreeOpenAtTheirSmallestKey) {
    catalogue.addCategory(5, "5", 1);
    catalogue.addCategory(13, "23", 1);
    catalogue.addCategory(23, "13", 1);
    catalogue.addCategory(53, "43", 1);
    catalogue.addCategory(63, "53", 1);
    catalogue.addCategory(43, "63", 1);
    catalogue.addCategory(73, "63", 2); // hangs on a ring
    catalogue.addCategory(83, "73", 1);
    EXPECT_EQ(summary(repair()), u"1 5: 1>1, 1 13: 1>2, 1 43: 1>3"_s);
    EXPECT_EQ(categories(), u"5,-,1 13,-,2 23,13,1 43,-,3 53,43,1 63,53,1 73,63,2 83,73,1"_s);
    EXPECT_EQ(check().unreachableCategories, 0);
}

TEST_F(Repair, assignmentsOfMissingCategoriesGo) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addArticle(1);
    catalogue.assign(10, 1, 99, 1);
    catalogue.assign(11, 1, 13, 3);
    execute(u"INSERT INTO ARTKAT ([ArtKatID], [Artikel-Schlüssel]) VALUES (12, 1)"_s);
    EXPECT_EQ(summary(repair()), u"2 10: 1>-, 2 12: ->-"_s);
    EXPECT_EQ(assignments(), u"11,1,13,3"_s);
    EXPECT_EQ(rows(u"SELECT [Artikel-Schlüssel] FROM ARTIKEL"_s), u"1"_s);
}

TEST_F(Repair, ofDoubledPairsTheSmallestKeyStays) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addArticle(1);
    catalogue.addArticle(2);
    catalogue.assign(30, 1, 13, 1);
    catalogue.assign(20, 2, 13, 2);
    catalogue.assign(10, 1, 13, 3);
    catalogue.assign(40, 1, 13, 4);
    EXPECT_EQ(summary(repair()), u"3 30: 1>-, 3 40: 4>-"_s);
    EXPECT_EQ(assignments(), u"10,1,13,3 20,2,13,2"_s);
}

TEST_F(Repair, doubledPositionsKeepTheirOrderByPositionTimeAndKey) {
    catalogue.addCategory(13, "NULL", 1);
    for (const int article : {1, 2, 3, 4})
        catalogue.addArticle(article);
    catalogue.assign(10, 1, 13, 2);
    catalogue.assign(11, 2, 13, 2);
    catalogue.assign(12, 3, 13, 1);
    catalogue.assign(13, 4, 13, 5);
    execute(u"UPDATE ARTKAT SET [LetzteÄnderung]=#2026-01-02# WHERE [ArtKatID]=10"_s);
    execute(u"UPDATE ARTKAT SET [LetzteÄnderung]=#2026-01-01# WHERE [ArtKatID]=11"_s);
    EXPECT_EQ(summary(repair()), u"6 10: 2>3"_s);
    EXPECT_EQ(assignments(), u"10,1,13,3 11,2,13,2 12,3,13,1 13,4,13,5"_s);
}

TEST_F(Repair, severalRowsWithoutPositionsGetSome) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addCategory(23, "NULL", 4);
    execute(u"UPDATE [ARTIKEL/KATEGORIEN] SET [Order]=Null WHERE [Kategorie-Schlüssel]=13"_s);
    EXPECT_FALSE(check().isDamaged());
    EXPECT_TRUE(repair().changes.isEmpty());
    catalogue.addCategory(33, "NULL", 5);
    execute(u"UPDATE [ARTIKEL/KATEGORIEN] SET [Order]=Null WHERE [Kategorie-Schlüssel]=33"_s);
    ASSERT_EQ(check().siblingPositions.size(), 1);
    EXPECT_TRUE(check().siblingPositions[0].position.isNull());
    EXPECT_EQ(check().siblingPositions[0].keys, (QList<Long>{13, 33}));
    EXPECT_EQ(summary(repair()), u"5 13: ->1, 5 33: ->2"_s);
    EXPECT_FALSE(check().isDamaged());
}

TEST_F(Repair, whereNoRoomIsLeftBehindTheLastRootTheRootsMoveUp) {
    catalogue.addCategory(13, "NULL", 2147483647);
    catalogue.addCategory(23, "99", 1);
    catalogue.addCategory(33, "99", 2);
    EXPECT_EQ(summary(repair()), u"0 23: 1>2, 0 33: 2>3, 5 13: 2147483647>1"_s);
    EXPECT_EQ(categories(), u"13,-,1 23,-,2 33,-,3"_s);
}

TEST_F(Repair, gapsStayUnlessDenseIsAskedFor) {
    catalogue.addCategory(13, "NULL", 2);
    catalogue.addCategory(23, "13", 1);
    catalogue.addCategory(33, "13", 3);
    catalogue.addArticle(1);
    catalogue.addArticle(2);
    catalogue.assign(10, 1, 23, 7);
    catalogue.assign(11, 2, 23, 3);
    EXPECT_TRUE(repair().changes.isEmpty());
    EXPECT_EQ(summary(repair({.dense = true})), u"5 13: 2>1, 5 33: 3>2, 6 10: 7>2, 6 11: 3>1"_s);
    EXPECT_TRUE(check().siblingGaps.isEmpty() && check().articleGaps.isEmpty());
    EXPECT_TRUE(repair({.dense = true}).changes.isEmpty());
}

TEST_F(Repair, assignmentsOfMissingArticlesStayUnlessAskedFor) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addCategory(23, "NULL", 1);
    catalogue.addArticle(1);
    catalogue.assign(10, 98, 13, 1);
    catalogue.assign(11, 1, 13, 2);
    const RepairReport kept = repair();
    EXPECT_EQ(summary(kept), u"5 23: 1>2"_s);
    ASSERT_EQ(kept.remaining.missingArticles.size(), 1);
    EXPECT_EQ(assignments(), u"10,98,13,1 11,1,13,2"_s);
    EXPECT_EQ(summary(repair({.deleteWithoutArticle = true})), u"4 10: 1>-"_s);
    EXPECT_EQ(assignments(), u"11,1,13,2"_s);
    EXPECT_FALSE(check().isDamaged());
}

TEST_F(Repair, aDryRunTellsTheSameAndStoresNothing) {
    catalogue.addCategory(13, "23", 1);
    catalogue.addCategory(23, "13", 1);
    catalogue.assign(10, 1, 99, 1);
    const QString before = categories() + assignments();
    const RepairReport planned = repair({.dryRun = true});
    EXPECT_TRUE(planned.remaining.isDamaged());
    EXPECT_EQ(categories() + assignments(), before);
    EXPECT_EQ(summary(planned), summary(repair()));
}

TEST_F(Repair, aReadOnlyCatalogueIsRefusedButCanBeTried) {
    catalogue.addCategory(13, "99", 1);
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = openCatalogue(*workspace, catalogue.path(), {.readOnly = true});
    EXPECT_EQ(errorOf([&] { repairCatalogue(*workspace, *database); }), 3027);
    EXPECT_EQ(workspace->transactionDepth(), 0);
    EXPECT_EQ(summary(repairCatalogue(*workspace, *database, {.dryRun = true})), u"0 13: 1>1"_s);
}

TEST_F(Repair, allIsUndoneWhereARowCannotBeStored) {
    catalogue.addCategory(13, "99", 1);
    catalogue.addCategory(23, "23", 1);
    catalogue.assign(10, 1, 77, 1);
    catalogue.run(u"CREATE TRIGGER keep BEFORE DELETE ON ARTKAT BEGIN SELECT RAISE(ABORT, 'kept'); END;"_s);
    const QString before = categories() + assignments();
    EXPECT_NE(errorOf([&] { repair(); }), 0);
    EXPECT_EQ(categories() + assignments(), before);
    EXPECT_EQ(catalogue.workspace().transactionDepth(), 0);
}

TEST_F(Repair, allIsUndoneWhereDamageWouldRemain) {
    catalogue.addCategory(13, "NULL", 1);
    catalogue.addCategory(23, "13", 1);
    catalogue.assign(13, 1, 77, 1);
    catalogue.database().createDeletionRule(
        {u"ARTKAT"_s, u"ArtKatID"_s, u"ARTIKEL/KATEGORIEN"_s, u"Kategorie-Schlüssel"_s});
    const QString before = categories() + assignments();
    EXPECT_EQ(errorOf([&] { repair(); }), 3049);
    EXPECT_EQ(categories() + assignments(), before);
}

namespace {

/// A catalogue as nobody would make it, from a seed.
class RandomDamage {
public:
    RandomDamage(dao::Database& database, unsigned seed)
        : database_(database)
        , random_(seed) {}

    void fill() {
        const int categories = number(0, 40);
        for (int key = 1; key <= categories; ++key)
            addCategory(key, categories);
        for (int key = 1; key <= 10; ++key)
            database_.Execute(u"INSERT INTO ARTIKEL ([Artikel-Schlüssel]) VALUES (%1)"_s.arg(key));
        for (int key = number(0, 80); key > 0; --key)
            database_.Execute(u"INSERT INTO ARTKAT ([ArtKatID], [Artikel-Schlüssel], [Kategorie-Schlüssel], [Order], "
                              "[LetzteÄnderung]) VALUES (%1, %2, %3, %4, #2026-01-0%5#)"_s.arg(key)
                                  .arg(nullOr(number(1, 11)))
                                  .arg(nullOr(number(1, 45)))
                                  .arg(nullOr(number(-1, 9)))
                                  .arg(number(1, 9)),
                              dao::dbFailOnError);
    }

private:
    int number(int lowest, int highest) { return std::uniform_int_distribution(lowest, highest)(random_); }
    QString nullOr(int value) { return number(1, 30) == 1 ? u"Null"_s : QString::number(value); }
    void addCategory(int key, int categories) {
        const QString parent = number(1, 3) == 1 ? u"Null"_s : QString::number(number(1, categories + 2));
        database_.Execute(u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], [Parent], [Order], "
                          "[LetzteÄnderung]) VALUES (%1, %2, %3, #2026-01-0%4#)"_s.arg(key)
                              .arg(parent, nullOr(number(0, 12)))
                              .arg(number(1, 9)),
                          dao::dbFailOnError);
    }

    dao::Database& database_;
    std::mt19937 random_;
};

} // namespace

class RandomRepair : public Repair, public testing::WithParamInterface<unsigned> {
protected:
    void fill() {
        catalogue.workspace().BeginTrans();
        RandomDamage(catalogue.database(), GetParam()).fill();
        catalogue.workspace().CommitTrans();
    }
    /// Rows of a group of siblings or of a category in the order in which they are shown, by owner.
    std::map<QString, QStringList> groups(const QString& key, const QString& owner, const QString& table) {
        std::map<QString, QStringList> groups;
        const QString found =
            rows(u"SELECT %1, %2 FROM %3 ORDER BY [Order], [LetzteÄnderung], %1"_s.arg(key, owner, table));
        for (const QString& row : found.split(u' ', Qt::SkipEmptyParts))
            groups[row.section(u',', 1)].append(row.section(u',', 0, 0));
        return groups;
    }
    std::map<QString, QStringList> siblings() {
        return groups(u"[Kategorie-Schlüssel]"_s, u"[Parent]"_s, u"[ARTIKEL/KATEGORIEN]"_s);
    }
    std::map<QString, QStringList> articles() {
        return groups(u"[ArtKatID]"_s, u"[Kategorie-Schlüssel]"_s, u"ARTKAT"_s);
    }
    QSet<QString> pairs() {
        const QString found = rows(u"SELECT a.[Artikel-Schlüssel], a.[Kategorie-Schlüssel] FROM ARTKAT AS a INNER JOIN "
                                   "[ARTIKEL/KATEGORIEN] AS k ON a.[Kategorie-Schlüssel]=k.[Kategorie-Schlüssel] "
                                   "WHERE a.[Artikel-Schlüssel] Is Not Null"_s);
        const QStringList list = found.split(u' ', Qt::SkipEmptyParts);
        return {list.begin(), list.end()};
    }
};

/// What is left of a group is in the order of before.
void expectSameOrder(const std::map<QString, QStringList>& before, const std::map<QString, QStringList>& after) {
    for (const auto& [owner, keys] : after) {
        const auto former = before.find(owner);
        if (former == before.end()) continue; // all of them are new roots
        QStringList common, left;
        for (const QString& key : former->second)
            if (keys.contains(key)) common.append(key);
        for (const QString& key : keys)
            if (former->second.contains(key)) left.append(key);
        EXPECT_EQ(left, common) << owner.toStdString();
        EXPECT_EQ(keys.first(left.size()), left) << "new roots go behind the others";
    }
}

TEST_P(RandomRepair, leavesAWholeCatalogueWithEverythingInIt) {
    fill();
    const QString keys =
        rows(u"SELECT [Kategorie-Schlüssel] FROM [ARTIKEL/KATEGORIEN] ORDER BY [Kategorie-Schlüssel]"_s);
    const auto formerSiblings = siblings(), formerArticles = articles();
    const QSet<QString> formerPairs = pairs();
    const CatalogueCheck found = check();
    const QString planned = summary(repair({.dryRun = true}));

    const RepairReport report = repair();
    EXPECT_EQ(summary(report), planned);
    CatalogueCheck left = check();
    left.missingArticles.clear();
    EXPECT_FALSE(left.isDamaged());
    EXPECT_EQ(left.unreachableCategories, 0);
    EXPECT_EQ(rows(u"SELECT [Kategorie-Schlüssel] FROM [ARTIKEL/KATEGORIEN] ORDER BY [Kategorie-Schlüssel]"_s), keys);
    EXPECT_EQ(rows(u"SELECT Count(*) FROM ARTIKEL"_s), u"10"_s);
    EXPECT_EQ(pairs(), formerPairs);
    expectSameOrder(formerSiblings, siblings());
    expectSameOrder(formerArticles, articles());
    EXPECT_EQ(report.changes.isEmpty(), !found.isDamaged() || summary(report).isEmpty());

    EXPECT_TRUE(repair().changes.isEmpty());
    repair({.dense = true, .deleteWithoutArticle = true});
    EXPECT_FALSE(check().isDamaged());
    EXPECT_TRUE(check().siblingGaps.isEmpty() && check().articleGaps.isEmpty());
    EXPECT_TRUE(repair({.dense = true, .deleteWithoutArticle = true}).changes.isEmpty());
}

TEST_P(RandomRepair, touchesNoRowThatIsNotReported) {
    fill();
    const auto all = [&] {
        return rows(u"SELECT * FROM [ARTIKEL/KATEGORIEN] ORDER BY [Kategorie-Schlüssel]"_s)
                   .split(u' ', Qt::SkipEmptyParts) +
               rows(u"SELECT * FROM ARTKAT ORDER BY [ArtKatID]"_s).split(u' ', Qt::SkipEmptyParts);
    };
    const QStringList before = all();
    const QSet<QString> former(before.begin(), before.end());
    const RepairReport report = repair();
    qsizetype deleted = 0;
    for (const RepairChange& change : report.changes)
        deleted += change.position.isNull() ? 1 : 0;
    const QStringList after = all();
    qsizetype changed = 0;
    for (const QString& row : after)
        changed += former.contains(row) ? 0 : 1;
    EXPECT_EQ(changed + deleted, report.changes.size()) << summary(report).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRepair, testing::Range(1U, 61U));

namespace {

class LargeRepair : public Repair {
protected:
    /// parentOf gives the parent of a key, 0 for a root.
    template<class ParentOf>
    void fill(Long count, ParentOf parentOf) {
        catalogue.workspace().BeginTrans();
        dao::RowWriter writer = catalogue.database().appendRows(u"ARTIKEL/KATEGORIEN"_s,
                                                                {u"Kategorie-Schlüssel"_s, u"Parent"_s, u"Order"_s});
        for (Long key = 1; key <= count; ++key) {
            const Long parent = parentOf(key);
            const Variant values[] = {Variant(key), parent == 0 ? Variant() : Variant(parent), Variant(1)};
            writer.append(values);
        }
        catalogue.workspace().CommitTrans();
    }
    static constexpr Long many = 30'000;
};

} // namespace

// Each would take minutes if the check or the plan compared all rows with all others.
TEST_F(LargeRepair, aRingOfAllCategories) {
    constexpr Long all = 100'000;
    fill(all, [](Long key) { return key == 1 ? all : key - 1; });
    const CatalogueCheck found = check();
    ASSERT_EQ(found.rings.size(), 1);
    EXPECT_EQ(found.rings[0].size(), all);
    EXPECT_EQ(found.unreachableCategories, all);
    EXPECT_EQ(summary(repair()), u"1 1: 1>1"_s);
    EXPECT_FALSE(check().isDamaged());
}

TEST_F(LargeRepair, chainsBelowARingAndBelowAMissingParent) {
    fill(many, [](Long key) { return key <= 3 ? key % 3 + 1 : key == 4 ? many + 1 : key - 2; });
    EXPECT_EQ(check().rings, (QList<QList<Long>>{{1, 2, 3}}));
    EXPECT_EQ(check().unreachableCategories, many);
    EXPECT_EQ(summary(repair()), u"0 4: 1>1, 1 1: 1>2, 5 5: 1>2"_s);
    EXPECT_EQ(check().unreachableCategories, 0);
}

TEST_F(LargeRepair, oneLevelWithOnePosition) {
    fill(many, [](Long) { return 0; });
    EXPECT_EQ(check().siblingPositions.size(), 1);
    EXPECT_EQ(repair().changes.size(), many - 1);
    EXPECT_FALSE(check().isDamaged());
}
