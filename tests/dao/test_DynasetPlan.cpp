// The two statements of a dynaset, run on the engine.
#include "dao/OpenedDatabase.h"
#include "dao/PlanCache.h"
#include "dao/sqlite/SqliteFile.h"
#include "jet/Compiler.h"

namespace dao {

namespace {

QByteArray catalogue() {
    return "CREATE TABLE A (Nr INTEGER PRIMARY KEY, Name TEXT, Aktiv YESNO);"
           "CREATE TABLE K (Nr INTEGER PRIMARY KEY, Name TEXT, Parent INTEGER);"
           "CREATE TABLE Z (ZNr INTEGER PRIMARY KEY, ANr INTEGER, KNr INTEGER, Pos INTEGER);"
           "CREATE TABLE P (a INTEGER NOT NULL, b TEXT NOT NULL, Preis CURRENCY, PRIMARY KEY (a, b));"
           "CREATE TABLE Frei (x INTEGER, y TEXT);"
           "INSERT INTO A VALUES (1, 'eins', -1), (2, 'zwei', 0), (3, 'drei', -1);"
           "INSERT INTO K VALUES (10, 'k10', NULL), (20, 'k20', 10), (30, 'k30', 10);"
           "INSERT INTO Z VALUES (100, 1, 10, 2), (101, 2, 10, 1), (102, 1, 20, 1), (103, 9, 20, 2);"
           "INSERT INTO P VALUES (1, 'x', 5), (1, 'X', 6), (2, 'x', 7);"
           "INSERT INTO Frei VALUES (5, 'e'), (6, 'f'), (5, 'e');";
}

struct DynasetPlanOf {
    explicit DynasetPlanOf(const QString& sql)
        : shape(jet::shapeOf(sql))
        , plan(jet::compileDynaset(sql, connection().schema(), connection().target())) {}

    static Connection& connection() {
        static const TempDatabase file(catalogue());
        static const std::shared_ptr<Connection> opened = openSqlite(file.path(), {});
        return *opened;
    }

    RowStore keys() const {
        RowStore rows;
        if (!plan.updatable) return rows;
        connection().prepare(plan.keys.text)->read(literals(plan.keys), rows);
        return rows;
    }
    // Each row by its keys: outputs, then "|" and the keys.
    QStringList rows() const {
        QStringList result;
        const RowStore all = keys();
        const auto statement = plan.updatable ? connection().prepare(plan.row.text) : nullptr;
        for (qsizetype i = 0; i < all.size(); ++i) {
            Parameters values = literals(plan.row);
            for (int k = 0; k < plan.keyTypes.size(); ++k)
                values.append(all.value(i, k));
            RowStore row;
            statement->read(values, row);
            result.append(row.size() == 1 ? shown(row) : u"?"_s);
        }
        return result;
    }
    QString shown(const RowStore& row) const {
        QStringList texts;
        const int outputs = static_cast<int>(plan.columns.size());
        for (int c = 0; c < outputs + plan.keyTypes.size(); ++c) {
            if (c == outputs) texts.append(u"|"_s);
            const Variant value = decode(row.value(0, c), jet::ColumnType::Unknown);
            texts.append(value.isNull() ? u"Null"_s : value.toText());
        }
        return texts.join(u' ');
    }
    Parameters literals(const jet::NativeStatement& statement) const {
        return parameterValues(statement.parameters, shape);
    }
    QList<int> sourcesOfColumns() const {
        QList<int> result;
        for (const jet::OutputColumn& column : plan.columns)
            result.append(column.source);
        return result;
    }
    QString deleteTable() const { return plan.deleteSource < 0 ? QString() : plan.sources[plan.deleteSource].name; }

    jet::Shape shape;
    jet::DynasetPlan plan;
};

} // namespace

TEST(DynasetPlan, OneTable) {
    const DynasetPlanOf d(u"SELECT Name, Nr*2 AS Doppelt, Name & '!' FROM A WHERE Nr<3 ORDER BY Nr DESC"_s);
    EXPECT_TRUE(d.plan.updatable);
    EXPECT_EQ(d.rows(), (QStringList{u"zwei 4 zwei! | 2"_s, u"eins 2 eins! | 1"_s}));
    EXPECT_EQ(d.sourcesOfColumns(), (QList<int>{0, -1, -1}));
    ASSERT_EQ(d.plan.sources.size(), 1);
    EXPECT_EQ(d.plan.sources[0].table, u"A");
    EXPECT_EQ(d.plan.sources[0].keyOrdinals, QList<int>{0});
    EXPECT_FALSE(d.plan.sources[0].optional);
    EXPECT_EQ(d.plan.deleteSource, 0);
    EXPECT_EQ(d.plan.keyTypes, QList<jet::ColumnType>{jet::ColumnType::Int});
}

TEST(DynasetPlan, KeysOfSeveralColumnsAreExact) {
    const DynasetPlanOf d(u"SELECT Preis FROM P ORDER BY Preis"_s);
    EXPECT_EQ(d.rows(), (QStringList{u"5 | 1 x"_s, u"6 | 1 X"_s, u"7 | 2 x"_s}));
}

TEST(DynasetPlan, WithoutAPrimaryKey) {
    const DynasetPlanOf d(u"SELECT f.y FROM Frei AS f ORDER BY f.y DESC"_s);
    EXPECT_EQ(d.rows(), (QStringList{u"f | 2"_s, u"e | 1"_s, u"e | 3"_s}));
    EXPECT_EQ(d.plan.sources[0].table, u"Frei");
    EXPECT_EQ(d.plan.sources[0].name, u"f");
}

TEST(DynasetPlan, InnerJoin) {
    const DynasetPlanOf d(u"SELECT A.Name, Pos FROM A INNER JOIN Z ON A.Nr=Z.ANr WHERE KNr=10 ORDER BY Pos"_s);
    EXPECT_EQ(d.rows(), (QStringList{u"zwei 1 | 2 101"_s, u"eins 2 | 1 100"_s}));
    EXPECT_EQ(d.deleteTable(), u"Z");
    EXPECT_EQ(d.sourcesOfColumns(), (QList<int>{0, 1}));
    EXPECT_EQ(d.plan.sources[1].keyOrdinals, QList<int>{1});
}

TEST(DynasetPlan, LeftJoinBothWays) {
    const DynasetPlanOf many(u"SELECT Z.ZNr, A.Name FROM Z LEFT JOIN A ON Z.ANr=A.Nr ORDER BY ZNr DESC"_s);
    EXPECT_EQ(many.rows(), (QStringList{u"103 Null | 103 Null"_s, u"102 eins | 102 1"_s, u"101 zwei | 101 2"_s,
                                        u"100 eins | 100 1"_s}));
    EXPECT_EQ(many.deleteTable(), u"Z");
    EXPECT_FALSE(many.plan.sources[0].optional);
    EXPECT_TRUE(many.plan.sources[1].optional);
    const DynasetPlanOf one(u"SELECT A.Name, ZNr FROM A LEFT JOIN Z ON A.Nr=Z.ANr WHERE A.Nr>1 ORDER BY A.Nr"_s);
    EXPECT_EQ(one.rows(), (QStringList{u"zwei 101 | 2 101"_s, u"drei Null | 3 Null"_s}));
    EXPECT_EQ(one.deleteTable(), u"Z");
    const DynasetPlanOf right(u"SELECT A.Name, ZNr FROM Z RIGHT JOIN A ON A.Nr=Z.ANr WHERE A.Nr=3"_s);
    EXPECT_EQ(right.rows(), QStringList{u"drei Null | Null 3"_s});
    EXPECT_TRUE(right.plan.sources[0].optional);
}

TEST(DynasetPlan, ChainsAndSelfJoins) {
    const DynasetPlanOf chain(u"SELECT A.Name, K.Name FROM (A INNER JOIN Z ON A.Nr=Z.ANr) INNER JOIN K ON "
                              "Z.KNr=K.Nr ORDER BY ZNr"_s);
    EXPECT_EQ(chain.rows(),
              (QStringList{u"eins k10 | 1 100 10"_s, u"zwei k10 | 2 101 10"_s, u"eins k20 | 1 102 20"_s}));
    EXPECT_EQ(chain.deleteTable(), u"Z");
    const DynasetPlanOf self(u"SELECT c.Name, p.Name FROM K AS c INNER JOIN K AS p ON c.Parent=p.Nr ORDER BY c.Nr"_s);
    EXPECT_EQ(self.rows(), (QStringList{u"k20 k10 | 20 10"_s, u"k30 k10 | 30 10"_s}));
    EXPECT_EQ(self.deleteTable(), u"c");
    EXPECT_EQ(self.plan.sources[1].table, u"K");
}

TEST(DynasetPlan, RowsStayReadableByTheirKeys) {
    const DynasetPlanOf d(u"SELECT Name FROM K WHERE Parent=10 AND Name Like 'k*' ORDER BY Name"_s);
    const RowStore keys = d.keys();
    ASSERT_EQ(keys.size(), 2);
    DynasetPlanOf::connection().executeScript("SAVEPOINT s; UPDATE K SET Parent=NULL, Name='zzz'; DELETE FROM K WHERE "
                                              "Nr=30");
    EXPECT_EQ(d.plan.row.parameters.size(), 0);
    const auto row = DynasetPlanOf::connection().prepare(d.plan.row.text);
    RowStore read;
    for (int i = 0; i < 2; ++i) {
        const StoredValue key = keys.value(i, 0);
        row->read({&key, 1}, read);
    }
    DynasetPlanOf::connection().executeScript("ROLLBACK TO s; RELEASE s");
    ASSERT_EQ(read.size(), 2);
    EXPECT_EQ(read.value(0, 0).bytes, "zzz");
    EXPECT_EQ(read.value(0, 1).integer, 20);
    EXPECT_EQ(read.value(1, 1).kind, StoredValue::Kind::Null);
}

TEST(DynasetPlan, TopAndHiddenOrder) {
    const DynasetPlanOf d(u"SELECT TOP 2 Name FROM A ORDER BY Nr DESC"_s);
    EXPECT_EQ(d.rows(), (QStringList{u"drei | 3"_s, u"zwei | 2"_s}));
    EXPECT_EQ(d.plan.fixedLiterals.size(), 1);
}

TEST(DynasetPlan, NotUpdatable) {
    for (const QString& sql :
         {u"SELECT DISTINCT Name FROM A"_s, u"SELECT Max(Nr) FROM A"_s, u"SELECT Name FROM A GROUP BY Name"_s,
          u"SELECT 1"_s, u"SELECT A.Nr FROM A, K"_s, u"SELECT A.Nr FROM A INNER JOIN K ON A.Name=K.Name"_s}) {
        const DynasetPlanOf d(sql);
        EXPECT_FALSE(d.plan.updatable) << sql.toStdString();
        EXPECT_EQ(d.plan.columns.size(), 1) << sql.toStdString();
        EXPECT_EQ(d.plan.deleteSource, -1);
    }
    EXPECT_TRUE(DynasetPlanOf(u"SELECT A.Nr FROM A, Z WHERE A.Nr=Z.ANr"_s).plan.updatable);
    EXPECT_EQ(errorOf([] { DynasetPlanOf(u"DELETE FROM A"_s); }), 3219);
    EXPECT_EQ(errorOf([] { DynasetPlanOf(u"SELECT x FROM A"_s); }), 3061);
}

} // namespace dao
