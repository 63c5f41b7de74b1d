#include "browser/BrowserHost.h"
#include "support/FixedReplica.h"

using namespace mkl;

namespace {

class KeyAllocationTest : public BrowserHost {
protected:
    /// The next key of a replica where these keys are taken.
    Long next(Long digit, std::initializer_list<Long> keys) {
        catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
        for (const Long key : keys)
            catalogue.addCategory({.key = key, .name = u"K"_s});
        browser->setHelper(makeRef<FixedReplica>(digit));
        return hub().keyAllocation->NewID(u"ARTIKEL/KATEGORIEN"_s, u"Kategorie-Schlüssel"_s);
    }
};

} // namespace

TEST_F(KeyAllocationTest, anEmptyTableBeginsWithOneInFrontOfEachDigit) {
    for (Long digit = 0; digit <= 9; ++digit)
        EXPECT_EQ(next(digit, {}), 10 + digit);
    EXPECT_EQ(screen().MousePointer(), vbDefault);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(KeyAllocationTest, onlyTheKeysOfItsReplicaCount) {
    EXPECT_EQ(next(3, {13, 23}), 33);
    EXPECT_EQ(next(3, {13, 23, 995, 1005}), 33);
    EXPECT_EQ(next(5, {13, 23}), 15);
    EXPECT_EQ(next(0, {10, 13, 20}), 30);
}

TEST_F(KeyAllocationTest, theRunningNumberGrowsInLength) {
    EXPECT_EQ(next(3, {93}), 103);
    EXPECT_EQ(next(3, {9993}), 10003);
}

TEST_F(KeyAllocationTest, aKeyOfOneDigitIsAnError) {
    EXPECT_EQ(next(3, {3}), -1);
    EXPECT_EQ(takeReports(), QStringList{u"NewID: 13"_s});
    EXPECT_EQ(screen().MousePointer(), vbHourglass); // until the next read ends
    browser->Populate();
    EXPECT_EQ(screen().MousePointer(), vbDefault);
    EXPECT_EQ(next(3, {3, 13}), 23);
}

TEST_F(KeyAllocationTest, atTheEndOfTheNumbersItFails) {
    EXPECT_EQ(next(7, {2147483637}), 2147483647);
    EXPECT_EQ(next(8, {2147483628}), 2147483638);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(next(7, {2147483647}), -1);
    EXPECT_EQ(takeReports(), QStringList{u"NewID: 6"_s});
    EXPECT_EQ(next(8, {2147483638}), -1);
    EXPECT_EQ(takeReports(), QStringList{u"NewID: 6"_s});
    screen().setMousePointer(vbDefault);
}

TEST_F(KeyAllocationTest, atTheOtherEndTheNumbersGoUpwards) {
    EXPECT_EQ(next(8, {std::numeric_limits<Long>::min()}), -2147483638);
}

TEST_F(KeyAllocationTest, withoutAHelperThereIsNoKey) {
    EXPECT_EQ(hub().keyAllocation->NewID(u"ARTIKEL/KATEGORIEN"_s, u"Kategorie-Schlüssel"_s), -1);
    EXPECT_EQ(takeReports(), QStringList{u"NewID: 91"_s});
    EXPECT_EQ(screen().MousePointer(), vbHourglass);
    screen().setMousePointer(vbDefault);
}

TEST_F(KeyAllocationTest, namesInBracketsStayAsTheyAre) {
    browser->setHelper(makeRef<FixedReplica>(3));
    EXPECT_EQ(hub().keyAllocation->NewID(u"[ARTIKEL/KATEGORIEN]"_s, u"[Kategorie-Schlüssel]"_s), 13);
    EXPECT_EQ(hub().keyAllocation->NewID(u"FEHLT"_s, u"Kategorie-Schlüssel"_s), -1);
    EXPECT_EQ(takeReports(), QStringList{u"NewID: 3078"_s});
    screen().setMousePointer(vbDefault);
}
