#include "Catalogue.h"
#include "core/CatalogueHelper.h"
#include "support/Printing.h"

using namespace mkl;

TEST(CatalogueHelper, asksTheDatabaseEachTime) {
    const Catalogue catalogue;
    const Ref<SessionHelper> helper = newSessionHelper(catalogue.database);
    EXPECT_EQ(helper->ReplicaInfo()->ReplicaDigit(), 0);
    const Ref<ReplicaInfo> info = helper->ReplicaInfo();
    catalogue.file.run("PRAGMA user_version = 7"); // another program
    EXPECT_EQ(info->ReplicaDigit(), 7);
    catalogue.database->setLocalNumber(3);
    EXPECT_EQ(info->ReplicaDigit(), 3);
    EXPECT_EQ(helper->ReplicaInfo()->ReplicaDigit(), 3);
}

TEST(CatalogueHelper, whatIsNoDigitIsAnError) {
    const Catalogue catalogue;
    const Ref<SessionHelper> helper = newSessionHelper(catalogue.database);
    catalogue.database->setLocalNumber(12);
    EXPECT_EQ(errorOf([&] { helper->ReplicaInfo()->ReplicaDigit(); }), 3421);
}

TEST(CatalogueHelper, withoutAnOpenDatabaseItFails) {
    EXPECT_EQ(errorOf([] { newSessionHelper({}); }), 91);
    const Catalogue catalogue;
    const Ref<SessionHelper> helper = newSessionHelper(catalogue.database);
    catalogue.database->Close();
    EXPECT_EQ(errorOf([&] { helper->ReplicaInfo()->ReplicaDigit(); }), 3420);
}
