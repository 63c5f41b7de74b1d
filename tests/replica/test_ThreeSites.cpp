#include "SiteStatements.h"
#include "Sites.h"
#include "catalogue/CatalogueRepair.h"
#include "catalogue/CatalogueReplication.h"
#include "support/CheckFindings.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class ThreeSites : public testing::Test {
protected:
    Sites sites{3, {addCategory(11, u"Null"_s, 1), addCategory(21, u"Null"_s, 2), addCategory(31, u"Null"_s, 3)}};
};

} // namespace

TEST_F(ThreeSites, eachTakesFromBothOthersAndNoKeyIsGivenTwice) {
    const auto write = [&](int round) {
        for (std::size_t site = 0; site < sites.count(); ++site) {
            QStringList statements;
            for (int i = 0; i < 20; ++i)
                statements.append(assign(1, 1000 * round + i, 1));
            sites[site].execute(statements);
        }
    };
    write(1);
    EXPECT_TRUE(sites.becomeEqual());
    sites.cut();
    write(2);
    sites.join();
    EXPECT_TRUE(sites.becomeEqual());
    for (std::size_t site = 0; site < sites.count(); ++site) {
        EXPECT_EQ(sites[site].native(u"SELECT count(DISTINCT \"ArtKatID\") FROM \"ARTKAT\""_s), "120");
        const ReplicationStatus status = replicationStatus(*sites[site].open());
        EXPECT_TRUE(status.isWorking());
        EXPECT_EQ(status.subscriptions.size(), 2);
        EXPECT_EQ(status.consumers.size(), 2);
        EXPECT_EQ(status.nextAssignment % 10, static_cast<qint64>(site) + 1);
    }
}

// Each of them moves one category under the next one.
TEST_F(ThreeSites, aRingThatNobodyMadeIsFoundEverywhereAndMendedFromOne) {
    sites.cut();
    sites[0].execute({moveCategory(11, 21)});
    sites[1].execute({moveCategory(21, 31)});
    sites[2].execute({moveCategory(31, 11)});
    sites.join();
    ASSERT_TRUE(sites.becomeEqual());
    for (std::size_t site = 0; site < sites.count(); ++site)
        EXPECT_EQ(sites[site].check().rings, (QList<QList<Long>>{{11, 21, 31}}));
    const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    const Ref<dao::Database> database = openCatalogue(*workspace, sites[2].url());
    EXPECT_FALSE(repairCatalogue(*workspace, *database).changes.isEmpty());
    ASSERT_TRUE(sites.becomeEqual());
    for (std::size_t site = 0; site < sites.count(); ++site)
        EXPECT_FALSE(sites[site].check().isDamaged());
}

TEST_F(ThreeSites, theThirdGoesOnWithTheSecondWhileTheFirstIsDown) {
    sites[0].server().kill();
    sites[1].execute({addCategory(42, u"Null"_s, 4)});
    sites[2].execute({addCategory(53, u"42"_s, 1)});
    EXPECT_TRUE(eventually([&] { return sites[1].rows() == sites[2].rows(); }));
    EXPECT_FALSE(replicationStatus(*sites[1].open()).isWorking());
    sites[0].server().start();
    sites.cut();
    sites.join(); // at once, where they would try again after some time by themselves
    EXPECT_TRUE(sites.becomeEqual());
    EXPECT_EQ(sites[0].native(u"SELECT count(*) FROM \"ARTIKEL/KATEGORIEN\""_s), "5");
}
