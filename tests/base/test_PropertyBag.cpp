#include "base/PropertyBag.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

TEST(PropertyBag, namesCompareWithoutCase) {
    PropertyBag bag;
    bag.WriteProperty(u"ShowStatusBar"_s, false, true);
    EXPECT_EQ(bag.ReadProperty(u"SHOWSTATUSBAR"_s, true), QVariant(false));
}

TEST(PropertyBag, defaultsAreNotStored) {
    PropertyBag bag;
    bag.WriteProperty(u"Imageset"_s, 1, 0);
    bag.WriteProperty(u"imageset"_s, 0, 0);
    EXPECT_TRUE(bag.names().isEmpty());
    EXPECT_EQ(bag.ReadProperty(u"Imageset"_s, 7), QVariant(7));
}
