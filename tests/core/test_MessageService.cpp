#include "core/MessageService.h"

#include "core/App.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"

using namespace Qt::StringLiterals;
using namespace mkl;

TEST(MessageService, ShowsTheCodedTextWithTheDetail) {
    ScriptedAsker asker;
    asker.answers = {vbNo};
    const QString detail = u"Kategorie: Schrauben\r\nSchlüssel: 41"_s;
    EXPECT_EQ(messageService().ShowCoded(1034, vbYesNo | vbCritical, detail), vbNo);
    ASSERT_EQ(asker.shown.size(), 1);
    EXPECT_EQ(asker.shown[0].text,
              u"Eine Kategorie konnte nicht eingelesen werden. Möchten Sie den Vorgang trotzdem fortsetzen?"_s);
    EXPECT_EQ(asker.shown[0].detail, detail);
    EXPECT_EQ(asker.shown[0].flags, 20);
    EXPECT_EQ(asker.shown[0].caption, app().Title());
}

TEST(MessageService, CodeZeroShowsTheDetailAlone) {
    const ScriptedAsker asker;
    EXPECT_EQ(messageService().ShowCoded(0, vbExclamation, u"Bitte markieren Sie zuerst die Ziel-Kategorie."_s), vbOK);
    ASSERT_EQ(asker.shown.size(), 1);
    EXPECT_EQ(asker.shown[0].text, u"Bitte markieren Sie zuerst die Ziel-Kategorie."_s);
    EXPECT_EQ(asker.shown[0].detail, QString());
}

TEST(MessageService, PutsItsValuesIn) {
    const ScriptedAsker asker;
    messageService().ShowCoded(1033, 36, {}, u"aufsteigend"_s, u"100 %1 & mehr"_s);
    ASSERT_EQ(asker.shown.size(), 1);
    EXPECT_EQ(asker.shown[0].text, u"Möchten Sie die Artikel der Kategorie '100 %1 & mehr' wirklich alphabetisch "
                                   "aufsteigend sortieren? Die bisherigen Positionen gehen dabei verloren."_s);
}

TEST(MessageService, AnUnknownCodeNamesItself) {
    const ScriptedAsker asker;
    messageService().ShowCoded(4242, vbCritical);
    ASSERT_EQ(asker.shown.size(), 1);
    EXPECT_TRUE(asker.shown[0].text.contains(u"4242"_s));
}

TEST(MessageService, GivesLibraryTexts) {
    EXPECT_EQ(messageService().LibraryText(7206), u"&OK"_s);
    EXPECT_EQ(messageService().LibraryText(1075), u"Kategorie wählen"_s);
}
