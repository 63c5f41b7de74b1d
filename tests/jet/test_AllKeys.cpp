#include "jet/AllKeys.h"

#include "jet/FakeCatalogue.h"

#include "support/Printing.h"

using namespace jet;
using namespace Qt::StringLiterals;

namespace {

// Bare column names; empty where the statement is none of that kind.
QByteArray allKeys(QStringView text) {
    const auto plan = compileForAllKeys(text, FakeSchema(), FakeTarget());
    return plan ? QByteArray(plan->native).replace("\"TYPEN\".", "").replace("\"", "") : QByteArray();
}

} // namespace

TEST(AllKeys, GivesTheRowsOfEachKeyTogetherInTheOrderOfTheStatement) {
    EXPECT_EQ(allKeys(u"SELECT txt, dat FROM TYPEN WHERE [lng]=17 ORDER BY dat DESC, yn;"),
              "SELECT txt, dat, lng FROM TYPEN WHERE (lng IS NOT NULL) ORDER BY lng up, dat down, yn up");
    EXPECT_EQ(allKeys(u"SELECT txt FROM TYPEN WHERE 17 = lng"),
              "SELECT txt, lng FROM TYPEN WHERE (lng IS NOT NULL) ORDER BY lng up");
    EXPECT_EQ(allKeys(u"SELECT lng, txt FROM TYPEN WHERE lng = 17"),
              "SELECT lng, txt, lng FROM TYPEN WHERE (lng IS NOT NULL) ORDER BY lng up");
}

TEST(AllKeys, KnowsTheLiteralOfTheKeyAndTheTypesBeforeIt) {
    const auto plan = compileForAllKeys(u"SELECT txt, dat FROM TYPEN WHERE lng=-17", FakeSchema(), FakeTarget());
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->key.literal, 0);
    EXPECT_TRUE(plan->key.negated);
    EXPECT_EQ(plan->outputs, (QList<ColumnType>{ColumnType::Text, ColumnType::Date}));
}

TEST(AllKeys, LeavesOtherStatementsAlone) {
    for (const QString& text : {u"SELECT txt FROM TYPEN"_s,
                                u"SELECT txt FROM TYPEN WHERE lng > 17"_s,
                                u"SELECT txt FROM TYPEN WHERE lng = 17 AND yn"_s,
                                u"SELECT txt FROM TYPEN WHERE lng Is Null"_s,
                                u"SELECT txt FROM TYPEN WHERE dbl = 17"_s,
                                u"SELECT txt FROM TYPEN WHERE yn = 1"_s,
                                u"SELECT txt FROM TYPEN WHERE lng = 1.5"_s,
                                u"SELECT txt FROM TYPEN WHERE lng = '17'"_s,
                                u"SELECT txt FROM TYPEN WHERE lng = dbl"_s,
                                u"SELECT txt FROM TYPEN WHERE lng + 1 = 17"_s,
                                u"SELECT TOP 2 txt FROM TYPEN WHERE lng = 17"_s,
                                u"SELECT DISTINCT txt FROM TYPEN WHERE lng = 17"_s,
                                u"SELECT txt FROM TYPEN WHERE lng = 17 GROUP BY txt"_s,
                                u"SELECT txt & 'x' FROM TYPEN WHERE lng = 17"_s,
                                u"SELECT txt FROM TYPEN WHERE lng = 17 ORDER BY 1"_s,
                                u"SELECT txt FROM TYPEN WHERE lng = 17 UNION SELECT txt FROM TYPEN"_s,
                                u"SELECT A.txt FROM TYPEN AS A, TYPEN AS B WHERE A.lng = 17"_s,
                                u"SELECT txt FROM (SELECT txt, lng FROM TYPEN) AS A WHERE lng = 17"_s,
                                u"SELECT dbl + 1 AS lng FROM TYPEN WHERE lng = 17"_s,
                                u"DELETE FROM TYPEN WHERE lng = 17"_s})
        EXPECT_EQ(allKeys(text), "") << text.toStdString();
}

TEST(AllKeys, RefusesTotals) {
    EXPECT_NE(mkl::errorOf([] { allKeys(u"SELECT Max(txt) FROM TYPEN WHERE lng = 17"); }), 0);
}
