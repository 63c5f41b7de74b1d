#include "dao/postgres/PostgresSavepoints.h"

#include <gtest/gtest.h>

namespace {

using dao::PostgresSavepoints;

TEST(PostgresSavepoints, OneOfALevelWaitsForTheNextStatementAndServesIt) {
    PostgresSavepoints savepoints;
    savepoints.set("level1");
    EXPECT_EQ(savepoints.point(), "level1");
    EXPECT_EQ(savepoints.takeDue(), QByteArrayList{"SAVEPOINT level1"});
    EXPECT_TRUE(savepoints.takeDue().isEmpty());
    EXPECT_EQ(savepoints.point(), "level1");
}

TEST(PostgresSavepoints, AfterALevelAStatementNeedsItsOwn) {
    PostgresSavepoints savepoints;
    savepoints.set("level1");
    savepoints.release("level1");
    EXPECT_EQ(savepoints.takeDue(), (QByteArrayList{"SAVEPOINT level1", "RELEASE level1"}));
    EXPECT_TRUE(savepoints.point().isEmpty());
}

TEST(PostgresSavepoints, ThatOfAStatementGoesBeforeALevel) {
    PostgresSavepoints savepoints;
    savepoints.setOwnPoint();
    savepoints.set("level1");
    EXPECT_EQ(savepoints.takeDue(), (QByteArrayList{"RELEASE statement", "SAVEPOINT level1"}));
    EXPECT_FALSE(savepoints.hasOwnPoint());
}

TEST(PostgresSavepoints, SettlingLeavesThoseOfLevelsAlone) {
    PostgresSavepoints savepoints;
    savepoints.set("level1");
    savepoints.takeDue();
    savepoints.setOwnPoint();
    EXPECT_EQ(savepoints.settle(), QByteArrayList{"RELEASE statement"});
    EXPECT_TRUE(savepoints.point().isEmpty());
    EXPECT_TRUE(savepoints.settle().isEmpty());
}

TEST(PostgresSavepoints, TheEndOfTheTransactionForgetsAll) {
    PostgresSavepoints savepoints;
    savepoints.set("level1");
    savepoints.forget();
    EXPECT_TRUE(savepoints.settle().isEmpty());
    EXPECT_TRUE(savepoints.point().isEmpty());
}

} // namespace
