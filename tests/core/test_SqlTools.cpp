// The texts that the statement tools make.
#include "core/SqlTools.h"

#include "support/Printing.h"

#include <QStringList>

using namespace Qt::StringLiterals;
using mkl::errorOf;
using mkl::SqlTools;

namespace {

constexpr mkl::Long syntaxError = 3075;

QString inserted(const QString& statement, const QString& criteria) {
    return SqlTools().InsertCriteria(statement, criteria);
}

// Criteria that hold what a text search would take for a part of the statement.
const QStringList trickyCriteria = {
    u"[Kategoriename]='a WHERE b'"_s,
    u"[Kategoriename]='ein ) zu viel'"_s,
    u"[Kategoriename]=\"it's; ORDER BY x\""_s,
    u"[Kategoriename]='O''Neill'"_s,
    u"[WHERE (] Is Null"_s,
    u"a=1 OR b=2"_s,
    u"[Kategoriename] Like '(SELECT*'"_s,
    u"(True AND (a=1))"_s,
    u"d=#2001-05-01#"_s,
};

const QStringList templates = {
    u"SELECT * FROM t"_s,
    u"SELECT * FROM t;"_s,
    u"SELECT a, Order, Group FROM [t WHERE] ORDER BY Order DESC;"_s,
    u"SELECT a, Count(*) FROM t GROUP BY a HAVING Count(*)>1 ORDER BY a;"_s,
    u"SELECT * FROM t WHERE a='x ORDER BY y' OR b=2 ORDER BY c;"_s,
    u"SELECT (SELECT Max(x) FROM u WHERE u.k=t.k) AS m FROM t"_s,
    u"SELECT t.Where FROM (SELECT * FROM u WHERE a=1) AS t GROUP BY t.Where"_s,
};

} // namespace

TEST(InsertCriteria, BecomeTheConditionOfAStatementWithoutOne) {
    EXPECT_EQ(inserted(u"SELECT * FROM t"_s, u"a=1"_s), u"SELECT * FROM t WHERE (True AND (a=1))"_s);
    EXPECT_EQ(inserted(u"SELECT * FROM t;"_s, u"a=1"_s), u"SELECT * FROM t WHERE (True AND (a=1));"_s);
    EXPECT_EQ(inserted(u"SELECT * FROM t ORDER BY b;"_s, u"a=1"_s),
              u"SELECT * FROM t WHERE (True AND (a=1)) ORDER BY b;"_s);
    EXPECT_EQ(inserted(u"SELECT a FROM t GROUP BY a HAVING Max(b)=1"_s, u"a=1"_s),
              u"SELECT a FROM t WHERE (True AND (a=1)) GROUP BY a HAVING Max(b)=1"_s);
    EXPECT_EQ(inserted(u"SELECT Max(a) FROM t HAVING b=1"_s, u"a=1"_s),
              u"SELECT Max(a) FROM t WHERE (True AND (a=1)) HAVING b=1"_s);
}

TEST(InsertCriteria, StandBesideTheConditionOfTheStatement) {
    EXPECT_EQ(inserted(u"SELECT * FROM t WHERE x=1 OR y=2 ORDER BY b"_s, u"a=1 OR a=2"_s),
              u"SELECT * FROM t WHERE (x=1 OR y=2) AND (True AND (a=1 OR a=2)) ORDER BY b"_s);
    EXPECT_EQ(inserted(u"SELECT * FROM t where x=1;"_s, u"a=1"_s),
              u"SELECT * FROM t WHERE (x=1) AND (True AND (a=1));"_s);
}

TEST(InsertCriteria, EmptyOnesLeaveTheStatementAsItIs) {
    for (const QString& statement : templates) {
        EXPECT_EQ(inserted(statement, {}), statement);
        const QString filtered = inserted(statement, u"a=1"_s);
        EXPECT_EQ(inserted(filtered, {}), filtered);
    }
}

TEST(InsertCriteria, ReplaceThoseOfAnEarlierCall) {
    for (const QString& statement : templates) {
        QString repeated = statement;
        for (int round = 0; round < 3; ++round)
            for (const QString& criteria : trickyCriteria) {
                repeated = inserted(repeated, criteria);
                EXPECT_EQ(repeated, inserted(statement, criteria));
            }
    }
}

TEST(InsertCriteria, KeepAConditionThatOnlyResemblesAnInsertedOne) {
    const QStringList own = {
        u"((a=1) AND (b=2))"_s, u"(True OR (a=1))"_s,    u"(a=1) AND (True AND b=2)"_s, u"True AND (a=1)"_s,
        u"(((a=1)))"_s,         u"(True AND (a)) = b"_s, u"NOT (True AND (a=1))"_s,
    };
    for (const QString& condition : own)
        EXPECT_EQ(inserted(u"SELECT * FROM t WHERE "_s + condition, u"k=1"_s),
                  u"SELECT * FROM t WHERE ("_s + condition + u") AND (True AND (k=1))"_s);
}

TEST(InsertCriteria, ThatAreNotOneExpressionAreRefused) {
    const QStringList hostile = {
        u"1=1) OR (1=1"_s,
        u"a=1; DELETE FROM t"_s,
        u"a='x"_s,
        u"a=\"x"_s,
        u"(a=1"_s,
        u"a=1)"_s,
        u"a=1 ORDER BY b"_s,
        u"a=1 b=2"_s,
        u"a="_s,
        u"WHERE a=1"_s,
        u"a=1 UNION SELECT * FROM t"_s,
        u"a=1;"_s,
        u"a=1 --"_s,
    };
    for (const QString& criteria : hostile)
        EXPECT_EQ(errorOf([&] { inserted(u"SELECT * FROM t"_s, criteria); }), syntaxError) << criteria.toStdString();
}

TEST(InsertCriteria, OfAUnionHaveNoPlace) {
    EXPECT_EQ(errorOf([] { inserted(u"SELECT a FROM t UNION SELECT a FROM u"_s, u"a=1"_s); }), 3219);
}

TEST(InsertCriteria, OfABrokenStatementAreRefused) {
    EXPECT_EQ(errorOf([] { inserted(u"SELECT * FROM t WHERE a=1) OR (b=2"_s, u"a=1"_s); }), syntaxError);
    EXPECT_EQ(errorOf([] { inserted(u"SELECT * FROM t WHERE (a=1"_s, u"a=1"_s); }), syntaxError);
}

TEST(BuildSelect, LeavesEmptyClausesOut) {
    const SqlTools tools;
    EXPECT_EQ(tools.BuildSelect(u"ARTIKEL"_s, {}, {}), u"SELECT * FROM ARTIKEL;"_s);
    EXPECT_EQ(tools.BuildSelect(u"ARTIKEL"_s, {}, {}, true), u"SELECT DISTINCT * FROM ARTIKEL;"_s);
    EXPECT_EQ(tools.BuildSelect(u"ARTIKEL"_s, u"[Aktiv]=-1"_s, {}), u"SELECT * FROM ARTIKEL WHERE ([Aktiv]=-1);"_s);
    EXPECT_EQ(tools.BuildSelect(u"ARTIKEL/KATEGORIEN"_s, u"[Parent]=17"_s, u"Order"_s),
              u"SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE ([Parent]=17) ORDER BY [Order];"_s);
}

TEST(BuildSelect, BracketsATableNameIfNeeded) {
    const auto from = [](const QString& table) { return SqlTools().BuildSelect(table, {}, {}); };
    EXPECT_EQ(from(u"ARTKAT"_s), u"SELECT * FROM ARTKAT;"_s);
    EXPECT_EQ(from(u"Währungen"_s), u"SELECT * FROM Währungen;"_s);
    EXPECT_EQ(from(u"[ARTIKEL/PREISE]"_s), u"SELECT * FROM [ARTIKEL/PREISE];"_s);
    EXPECT_EQ(from(u"2024"_s), u"SELECT * FROM [2024];"_s);
    EXPECT_EQ(from(u"Select"_s), u"SELECT * FROM [Select];"_s);
}

TEST(BuildSelect, BracketsTheColumnsOfItsOrder) {
    const auto order = [](const QString& orderBy) {
        const QString sql = SqlTools().BuildSelect(u"t"_s, {}, orderBy);
        return sql.sliced(QStringView(u"SELECT * FROM t ORDER BY ").size()).chopped(1);
    };
    EXPECT_EQ(order(u"Order"_s), u"[Order]"_s);
    EXPECT_EQ(order(u"[Artikel-Schlüssel]"_s), u"[Artikel-Schlüssel]"_s);
    EXPECT_EQ(order(u"Artikel-Schlüssel desc"_s), u"[Artikel-Schlüssel] desc"_s);
    EXPECT_EQ(order(u"Order, Kategoriename DESC,[a,b] ASC, x"_s), u"[Order], [Kategoriename] DESC, [a,b] ASC, [x]"_s);
    EXPECT_EQ(order(u"Desc"_s), u"[Desc]"_s);
    EXPECT_EQ(order(u"2, 1 DESC"_s), u"2, 1 DESC"_s);
    EXPECT_EQ(order(u"ARTIKEL.Artikelname"_s), u"ARTIKEL.Artikelname"_s);
    EXPECT_EQ(order(u"IIf(a='x,y,z',1,2), Order"_s), u"IIf(a='x,y,z',1,2), Order"_s);
}

TEST(BuildSelect, RefusesCriteriaThatCloseItsParentheses) {
    for (const QString& criteria : {u"1=1) OR (1=1"_s, u"1=1) OR (1=1 ORDER BY ')'"_s, u"a=1);"_s})
        EXPECT_EQ(errorOf([&] { SqlTools().BuildSelect(u"t"_s, criteria, u"Order"_s); }), syntaxError);
    EXPECT_EQ(errorOf([] { SqlTools().BuildSelect(u"t"_s, u"[a] IN(3,7) AND b=')'"_s, {}); }), 0);
}

TEST(InsertOrderBy, ReplacesTheOrder) {
    const auto ordered = [](const QString& statement) {
        return SqlTools().InsertOrderBy(statement, u"ORDER BY [k]"_s);
    };
    EXPECT_EQ(ordered(u"SELECT * FROM t"_s), u"SELECT * FROM t ORDER BY [k]"_s);
    EXPECT_EQ(ordered(u"SELECT * FROM t;"_s), u"SELECT * FROM t ORDER BY [k];"_s);
    EXPECT_EQ(ordered(u"SELECT Order FROM t ORDER BY Order DESC, [ORDER BY];"_s),
              u"SELECT Order FROM t ORDER BY [k];"_s);
    EXPECT_EQ(ordered(u"SELECT a FROM (SELECT TOP 3 a FROM u ORDER BY b) AS t WHERE a='ORDER BY x' GROUP BY a"_s),
              u"SELECT a FROM (SELECT TOP 3 a FROM u ORDER BY b) AS t WHERE a='ORDER BY x' GROUP BY a ORDER BY [k]"_s);
    EXPECT_EQ(ordered(u"SELECT a FROM t UNION SELECT a FROM u ORDER BY a;"_s),
              u"SELECT a FROM t UNION SELECT a FROM u ORDER BY [k];"_s);
    EXPECT_EQ(SqlTools().InsertOrderBy(u"SELECT * FROM t ORDER BY a;"_s, {}), u"SELECT * FROM t ORDER BY a;"_s);
}

TEST(InsertOrderBy, RunsOnItsOwnOutputAndOnThatOfInsertCriteria) {
    const SqlTools tools;
    for (const QString& statement : templates) {
        const QString once = tools.InsertOrderBy(statement, u"ORDER BY [k]"_s);
        EXPECT_EQ(tools.InsertOrderBy(once, u"ORDER BY [k]"_s), once);
        const QString empty = tools.InsertOrderBy(statement, u"ORDER BY "_s);
        EXPECT_EQ(tools.InsertOrderBy(empty, u"ORDER BY [k]"_s), once);
        for (const QString& criteria : trickyCriteria)
            EXPECT_EQ(tools.InsertOrderBy(inserted(statement, criteria), u"ORDER BY [k]"_s), inserted(once, criteria));
    }
}
