#include "Sites.h"
#include "catalogue/CatalogueReplica.h"
#include "catalogue/CatalogueReplication.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

TEST(ReplicaKeys, theSmallestAboveTheHighestThatEndsInTheDigit) {
    EXPECT_EQ(nextReplicaKey({}, 0), 10);
    EXPECT_EQ(nextReplicaKey({}, 3), 13);
    EXPECT_EQ(nextReplicaKey(-50, 3), 13);
    EXPECT_EQ(nextReplicaKey(9, 9), 19);
    EXPECT_EQ(nextReplicaKey(10, 0), 20);
    EXPECT_EQ(nextReplicaKey(12, 3), 13);
    EXPECT_EQ(nextReplicaKey(13, 3), 23);
    EXPECT_EQ(nextReplicaKey(57, 3), 63);
    EXPECT_EQ(nextReplicaKey(2147483647, 5), 2147483655);
}
