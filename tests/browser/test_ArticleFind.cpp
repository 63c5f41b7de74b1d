// The search of the pool by name.
#include "browser/AssignmentHost.h"
#include "browser/dialogs/frmAddArticleFind.h"
#include "support/ScriptedForms.h"

#include <QLineEdit>

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse, 30 Schraube, 31 Schraubendreher, 32 SCHRAUBE kurz\n"
                     "50 Werkzeug: 7 Ahle, 33 Äxte\n"_s;

class ArticleFindTest : public AssignmentHost {
protected:
    ArticleFindTest()
        : AssignmentHost(shop) {
        browser->show();
        browser->Populate();
        pool().deselectOthers({});
        events.take();
    }

    /// The user types the term and confirms.
    static ScriptedForms::Answer typing(const QString& term) {
        return [term](QDialog& form) {
            form.findChild<QLineEdit*>(u"txtSearch"_s)->setText(term);
            pressKey(form, Qt::Key_Return);
        };
    }
    /// The user goes on with that option.
    ScriptedForms::Answer goOn(Long option) {
        return [this, option](QDialog& form) {
            noteHit(form);
            static_cast<frmAddArticleFind&>(form).optMark(option).setValue(true);
            pressKey(form, Qt::Key_W, Qt::AltModifier);
        };
    }
    ScriptedForms::Answer yes() { return goOn(0); }
    ScriptedForms::Answer no() { return goOn(1); }
    ScriptedForms::Answer stop() {
        return [this](QDialog& form) {
            noteHit(form);
            pressKey(form, Qt::Key_Escape);
        };
    }
    void noteHit(QDialog& form) {
        const auto& hit = static_cast<frmAddArticleFind&>(form);
        shown.append(hit.txtArtNr.Text() + u' ' + hit.txtArtikelname.Text());
    }

    void find(QList<ScriptedForms::Answer> answers) {
        shown.clear();
        const ScriptedForms forms(std::move(answers));
        hub().articleFind->KLVArt_Find();
    }
    QStringList selected() const {
        QStringList texts;
        for (const Ref<ListItem>& item : pool().SelectedItems())
            texts.append(item->Text());
        return texts;
    }
    QString takeMessage() {
        if (user.shown.isEmpty()) return {};
        const MessageBox box = user.shown.takeFirst();
        EXPECT_TRUE(user.shown.isEmpty());
        return box.text + box.detail + u'|' + QString::number(box.flags);
    }

    QStringList shown; ///< the hits of the last search, as the form showed them
};

} // namespace

TEST_F(ArticleFindTest, withoutAStarOnlyTheWholeNameIsFound) {
    find({typing(u"schraube"_s), yes()});
    EXPECT_EQ(shown, QStringList{u"30 Schraube"_s});
    EXPECT_EQ(selected(), QStringList{u"00030"_s});
    EXPECT_EQ(takeMessage(), u"Die Suche ist beendet.\nGefundene Artikel: 1, davon ausgewählt: 1|64"_s);
    EXPECT_EQ(panel(u"LVArt"_s), u"7 Artikel / 1 ausgewählt"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticleFindTest, withAStarLongerNamesAreFoundToo) {
    find({typing(u"sCHRaube*"_s), yes(), no(), yes()});
    EXPECT_EQ(shown, (QStringList{u"30 Schraube"_s, u"31 Schraubendreher"_s, u"32 SCHRAUBE kurz"_s}));
    EXPECT_EQ(selected(), (QStringList{u"00030"_s, u"00032"_s}));
    EXPECT_EQ(takeMessage(), u"Die Suche ist beendet.\nGefundene Artikel: 3, davon ausgewählt: 2|64"_s);
}

TEST_F(ArticleFindTest, umlautsAreFoundWithoutCase) {
    find({typing(u"äXTE"_s), yes()});
    EXPECT_EQ(shown, QStringList{u"33 Äxte"_s});
    takeMessage();
    find({typing(u"*XT*"_s), no()});
    EXPECT_EQ(shown, QStringList{u"33 Äxte"_s});
}

TEST_F(ArticleFindTest, theOptionStaysFromHitToHit) {
    const auto asBefore = [this](QDialog& form) {
        noteHit(form);
        pressKey(form, Qt::Key_W, Qt::AltModifier);
    };
    find({typing(u"schraube*"_s), asBefore, no(), asBefore});
    EXPECT_EQ(selected(), QStringList{u"00030"_s});
}

TEST_F(ArticleFindTest, theHitIsSelectedAndInViewWhileTheFormAsks) {
    for (Long article = 1000; article < 1200; ++article)
        catalogue.addArticle(article, u"Keil"_s);
    catalogue.addArticle(9000, u"Zange"_s);
    browser->RefreshPane(acbPaneArticlePool);
    QStringList seen, marked;
    int served = 0;
    pump.whenServed = [&] { ++served; };
    find({typing(u"zange"_s), [&](QDialog& form) {
              seen = pool().keysInSight();
              marked = selected();
              pressKey(form, Qt::Key_A, Qt::AltModifier);
          }});
    EXPECT_TRUE(seen.contains(u"A9000"_s));
    EXPECT_TRUE(marked.contains(u"09000"_s));
    EXPECT_EQ(served, 1);
    EXPECT_FALSE(selected().contains(u"09000"_s));
}

TEST_F(ArticleFindTest, stoppedAtTheFirstHit) {
    find({typing(u"schraube*"_s), stop()});
    EXPECT_EQ(takeMessage(), u"Die Suche wurde abgebrochen.|64"_s);
    EXPECT_EQ(selected(), QStringList());
}

TEST_F(ArticleFindTest, stoppedAtTheThirdHit) {
    find({typing(u"schraube*"_s), yes(), yes(), stop()});
    EXPECT_EQ(takeMessage(), u"Die Suche wurde abgebrochen.\nGefundene Artikel: 3, davon ausgewählt: 2|64"_s);
    EXPECT_EQ(selected(), (QStringList{u"00030"_s, u"00031"_s}));
    EXPECT_EQ(panel(u"LVArt"_s), u"7 Artikel / 2 ausgewählt"_s);
}

TEST_F(ArticleFindTest, closingTheFormByItsFrameStops) {
    find({typing(u"schraube*"_s), yes(), closeForm});
    EXPECT_EQ(takeMessage(), u"Die Suche wurde abgebrochen.\nGefundene Artikel: 2, davon ausgewählt: 1|64"_s);
}

TEST_F(ArticleFindTest, withoutAHit) {
    find({typing(u"Schraub"_s)});
    EXPECT_EQ(takeMessage(), u"Die Suche ist beendet.\nGefundene Artikel: 0, davon ausgewählt: 0|64"_s);
}

TEST_F(ArticleFindTest, withoutATermNothingHappens) {
    find({typing(QString())});
    find({[](QDialog& form) { pressKey(form, Qt::Key_Escape); }});
    EXPECT_EQ(takeMessage(), QString());
    EXPECT_EQ(panel(u"LVArt"_s), u"7 Artikel / 1 ausgewählt"_s); // not written again
}

TEST_F(ArticleFindTest, whatWasSelectedBeforeStays) {
    select(pool(), {1});
    find({typing(u"linse"_s), yes()});
    EXPECT_EQ(selected(), (QStringList{u"00007"_s, u"04711"_s}));
    EXPECT_EQ(panel(u"LVArt"_s), u"7 Artikel / 2 ausgewählt"_s);
    EXPECT_EQ(events.take(), QStringList());
}

TEST_F(ArticleFindTest, aHitThatWasSelectedBeforeIsUnselectedByNo) {
    select(pool(), {1, 7});
    find({typing(u"linse"_s), no()});
    EXPECT_EQ(selected(), QStringList{u"00007"_s});
}

TEST_F(ArticleFindTest, whatTheFiltersHideIsNotFound) {
    tick(u"KLVArt_UnCategorized"_s);
    catalogue.addArticle(99, u"Übrig"_s);
    browser->RefreshPane(acbPaneArticlePool);
    find({typing(u"linse"_s)});
    EXPECT_EQ(takeMessage(), u"Die Suche ist beendet.\nGefundene Artikel: 0, davon ausgewählt: 0|64"_s);
}

TEST_F(ArticleFindTest, hitsComeInTheOrderOfTheList) {
    hub().articlePanes->sortBy(pool(), 2);
    find({typing(u"*e*"_s), stop()});
    EXPECT_EQ(shown, QStringList{u"7 Ahle"_s});
    takeMessage();
    find({typing(u"*"_s), yes(), yes(), stop()});
    EXPECT_EQ(shown, (QStringList{u"7 Ahle"_s, u"33 Äxte"_s, u"4711 Linse"_s}));
}

TEST_F(ArticleFindTest, aBrokenPatternIsReported) {
    find({typing(u"[a*"_s)});
    EXPECT_EQ(takeReports(), QStringList{u"FindArticle: 93"_s});
    EXPECT_EQ(takeMessage(), QString());
}

TEST_F(ArticleFindTest, rowsThatAnotherReadHasTakenAwayAreLeftOut) {
    find({typing(u"schraube*"_s), [&](QDialog& form) {
              browser->RefreshPane(acbPaneArticlePool);
              pressKey(form, Qt::Key_W, Qt::AltModifier);
          }});
    EXPECT_EQ(takeMessage(), u"Die Suche ist beendet.\nGefundene Artikel: 1, davon ausgewählt: 1|64"_s);
}

TEST_F(ArticleFindTest, theDialogAsksForTheNameAndIsMadeOnce) {
    const Ref<FindDialog> first = hub().m_Finder->FindDialog();
    QString prompt;
    find({[&](QDialog& form) {
        prompt = form.findChild<QLineEdit*>(u"txtSearch"_s)->accessibleName();
        EXPECT_EQ(form.parentWidget(), browser.get());
        pressKey(form, Qt::Key_Escape);
    }});
    EXPECT_EQ(prompt, u"Artikelname suchen:"_s);
    EXPECT_EQ(hub().m_Finder->FindDialog(), first);
}

// --- closed meanwhile -----------------------------------------------------------------------------------------------

TEST_F(ArticleFindTest, theControlMayBeClosedWhileTheTermIsTyped) {
    const auto closing = hub().shared_from_this();
    const ScriptedForms forms({[this](QDialog&) { browser.reset(); }});
    closing->articleFind->KLVArt_Find();
    EXPECT_EQ(takeMessage(), QString());
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticleFindTest, theControlMayBeClosedWhileAHitShows) {
    const auto closing = hub().shared_from_this();
    const ScriptedForms forms({typing(u"schraube*"_s), yes(), [this](QDialog&) { browser.reset(); }});
    closing->articleFind->KLVArt_Find();
    EXPECT_EQ(takeMessage(), QString());
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticleFindTest, theControlMayBeClosedBeforeAHitShows) {
    const auto closing = hub().shared_from_this();
    const ScriptedForms forms({typing(u"schraube*"_s)});
    pump.whenServed = [this] { browser.reset(); };
    closing->articleFind->KLVArt_Find();
    EXPECT_EQ(takeMessage(), QString());
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(ArticleFindTest, theControlMayBeClosedWhileTheResultShows) {
    const auto closing = hub().shared_from_this();
    const ScriptedForms forms({typing(u"linse"_s), yes()});
    user.whileShown = [this] { browser.reset(); };
    closing->articleFind->KLVArt_Find();
    EXPECT_EQ(browser, nullptr);
    EXPECT_EQ(takeReports(), QStringList());
}
