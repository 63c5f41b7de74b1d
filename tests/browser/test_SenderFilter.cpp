#include "browser/SenderFilter.h"
#include "support/CatalogueFixture.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class SenderFilter : public ::testing::Test {
protected:
    SenderFilter() {
        for (const Long key : {3, 7, -5})
            catalogue.addSender(key);
    }
    Long sender(const QString& filter) const { return SenderFromWorkgroupFilter(filter, catalogue.database()); }

    CatalogueFixture catalogue;
};

} // namespace

TEST_F(SenderFilter, theFilterForAllNamesNoSender) {
    EXPECT_EQ(sender(u"Like '*'"_s), 0);
    EXPECT_EQ(sender(u"LIKE '*'"_s), 0);
    EXPECT_EQ(SenderFromWorkgroupFilter(u"Like '*'"_s, {}), 0) << "the table is not asked";
}

TEST_F(SenderFilter, theFirstOfAListCounts) {
    EXPECT_EQ(sender(u"IN(3,7)"_s), 3);
    EXPECT_EQ(sender(u"in ( 7 , 3 )"_s), 7);
    EXPECT_EQ(sender(u"IN(3)"_s), 3);
    EXPECT_EQ(sender(u"IN(-5)"_s), -5);
}

TEST_F(SenderFilter, anExclusionIsReadLikeAList) {
    EXPECT_EQ(sender(u"NOT IN(3)"_s), 3);
}

TEST_F(SenderFilter, anUnknownSenderIsNone) {
    EXPECT_EQ(sender(u"IN(4,3)"_s), 0);
}

TEST_F(SenderFilter, whatIsNoListOfNumbersNamesNone) {
    for (const QString& filter :
         {u""_s, u"=3"_s, u"Between 3 And 7"_s, u"IN('3x')"_s, u"IN()"_s, u"IN("_s, u"IN(3"_s, u"IN(abc,3)"_s})
        EXPECT_EQ(sender(filter), 0) << filter.toStdString();
}

TEST_F(SenderFilter, aNumberBeyond32BitsIsAnOverflow) {
    EXPECT_EQ(errorOf([&] { sender(u"IN(99999999999)"_s); }), err::Overflow);
}
