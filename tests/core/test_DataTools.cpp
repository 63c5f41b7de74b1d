#include "core/DataTools.h"

#include "core/Catalogue.h"
#include "support/Printing.h"

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

class DataToolsTest : public testing::Test {
protected:
    Long count(const QString& table, const QString& criteria) {
        return DataTools().CountRows(catalogue.database, table, criteria);
    }

    Catalogue catalogue;
};

} // namespace

TEST_F(DataToolsTest, CountsTheRowsThatMeetTheCriteria) {
    EXPECT_EQ(count(u"ARTKAT"_s, {}), 4);
    EXPECT_EQ(count(u"ARTKAT"_s, u"[Kategorie-Schlüssel]=1"_s), 2);
    EXPECT_EQ(count(u"ARTIKEL/KATEGORIEN"_s, u"[Parent] Is Null"_s), 2);
    EXPECT_EQ(count(u"[ARTIKEL/KATEGORIEN]"_s, u"[Parent]=99"_s), 0);
    EXPECT_EQ(errorOf([&] { count(u"ARTKAT"_s, u"1=1) OR (1=1"_s); }), 3075);
    EXPECT_EQ(errorOf([&] { count(u"FEHLT"_s, {}); }), 3078);
}

TEST_F(DataToolsTest, LooksAValueUp) {
    Variant answer;
    EXPECT_TRUE(DataTools().LookupField(catalogue.database, u"ARTIKEL/KATEGORIEN"_s, u"Kategorie-Schlüssel"_s, 2,
                                        answer, u"Kategoriename"_s));
    EXPECT_EQ(answer, Variant(u"Muttern"_s));
    EXPECT_TRUE(DataTools().LookupField(catalogue.database, u"ARTIKEL/KATEGORIEN"_s, u"Kategorie-Schlüssel"_s, 1,
                                        answer, u"Parent"_s));
    EXPECT_EQ(answer, Variant());
}

TEST_F(DataToolsTest, AnUnknownKeyLeavesTheAnswer) {
    Variant answer = 5;
    EXPECT_FALSE(DataTools().LookupField(catalogue.database, u"ARTIKEL"_s, u"Artikel-Schlüssel"_s, 999, answer,
                                         u"Artikelname"_s));
    EXPECT_EQ(answer, Variant(5));
}

TEST_F(DataToolsTest, AnEmptyBackendIsARunTimeError) {
    Variant answer;
    EXPECT_EQ(errorOf([] { DataTools().CountRows({}, u"ARTKAT"_s, {}); }), err::ObjectNotSet);
    EXPECT_EQ(errorOf([&] { DataTools().LookupField({}, u"ARTIKEL"_s, u"k"_s, 1, answer, u"n"_s); }),
              err::ObjectNotSet);
}
