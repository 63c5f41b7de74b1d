// The clock of one site is an hour ahead.
#include "Sites.h"
#include "catalogue/CatalogueReplication.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

constexpr int oneHour = 3600;
const QString category =
    u"INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], Kategoriename, [Order]) VALUES (%1, 'K', %1)"_s;

class WrongClock : public testing::Test {
protected:
    void rename(std::size_t site, int key, const QString& name) {
        sites[site].execute(
            {u"UPDATE [ARTIKEL/KATEGORIEN] SET Kategoriename='%1' WHERE [Kategorie-Schlüssel]=%2"_s.arg(name).arg(
                key)});
    }
    QByteArray nameOf(std::size_t site, int key) {
        return sites[site].native(
            u"SELECT \"Kategoriename\" FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = %1"_s.arg(key));
    }

    Sites sites{2, {category.arg(11), category.arg(21), category.arg(31)}, {}, oneHour};
};

} // namespace

TEST_F(WrongClock, theSiteAheadWinsWithTheOlderVersion) {
    sites.cut();
    rename(0, 11, u"früher"_s);
    rename(1, 11, u"später"_s);
    sites.join();
    EXPECT_TRUE(sites.becomeEqual());
    EXPECT_EQ(nameOf(1, 11), "früher");
}

TEST_F(WrongClock, theSiteAheadTakesNoChangesOfItsRowsUntilItStoresThemAnew) {
    rename(0, 11, u"von 1"_s);
    ASSERT_TRUE(sites.becomeEqual());
    rename(1, 11, u"von 2"_s); // by somebody who has seen the other name
    rename(1, 21, u"auch von 2"_s);
    EXPECT_TRUE(sites.settle());
    EXPECT_EQ(nameOf(0, 11), "von 1");
    EXPECT_EQ(nameOf(1, 11), "von 2");
    EXPECT_FALSE(sites[0].check().isDamaged()); // rows that differ are none to a check of one site
    rename(0, 11, u"von 2"_s);
    rename(0, 21, u"auch von 2"_s);
    EXPECT_TRUE(sites.becomeEqual());
    EXPECT_EQ(nameOf(1, 11), "von 2");
}

TEST_F(WrongClock, theStatusOfTheOtherSiteTellsOfIt) {
    const auto secondsAhead = [this](std::size_t site) { return replicationStatus(*sites[site].open()).secondsAhead; };
    EXPECT_EQ(secondsAhead(1), 0); // all its rows were stored there
    rename(0, 11, u"von 1"_s);
    ASSERT_TRUE(sites.becomeEqual());
    EXPECT_GT(secondsAhead(1), oneHour - 300);
    EXPECT_LE(secondsAhead(1), oneHour);
    EXPECT_FALSE(replicationStatus(*sites[1].open()).isWorking());
    EXPECT_EQ(secondsAhead(0), 0);
}

TEST_F(WrongClock, newAndDeletedRowsArriveAllTheSame) {
    sites[1].execute({category.arg(42), u"DELETE FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=31"_s});
    EXPECT_TRUE(sites.becomeEqual());
    EXPECT_EQ(nameOf(0, 42), "K");
    EXPECT_EQ(nameOf(0, 31), "NULL");
}
