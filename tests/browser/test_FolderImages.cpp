#include "browser/FolderImages.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

TEST(FolderImages, joinStemSetAndState) {
    EXPECT_EQ(folderImage(true, false, acbImageset1), u"OrdnerZuOn"_s);
    EXPECT_EQ(folderImage(false, false, acbImageset1), u"OrdnerZuOff"_s);
    EXPECT_EQ(folderImage(true, true, acbImageset1), u"OrdnerAufOn"_s);
    EXPECT_EQ(folderImage(false, true, acbImageset1), u"OrdnerAufOff"_s);
    EXPECT_EQ(folderImage(true, false, acbImageset2), u"OrdnerZu2On"_s);
    EXPECT_EQ(folderImage(false, false, acbImageset2), u"OrdnerZu2Off"_s);
    EXPECT_EQ(folderImage(true, true, acbImageset2), u"OrdnerAuf2On"_s);
    EXPECT_EQ(folderImage(false, true, acbImageset2), u"OrdnerAuf2Off"_s);
}

TEST(FolderImages, activeStateIsReadFromTheEnd) {
    EXPECT_TRUE(isActiveImage(u"OrdnerZuOn"));
    EXPECT_FALSE(isActiveImage(u"OrdnerZuOff"));
    EXPECT_FALSE(isActiveImage(u"OrdnerZu"));
    EXPECT_FALSE(isActiveImage(u"OrdnerZuOn1"));
    EXPECT_FALSE(isActiveImage(u""));
}
