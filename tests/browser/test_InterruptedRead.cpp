// The host does what it likes while a read serves the message queue.
#include "browser/BrowserHost.h"

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

class InterruptedRead : public BrowserHost {
protected:
    InterruptedRead()
        : BrowserHost(u"41 Schrauben\n  42 Holzschrauben\n50 Werkzeug"_s) {}

    /// Does that when the queue is served for the given time.
    void onServing(int turn, const std::function<void()>& doing) {
        pump.whenServed = [this, turn, doing] {
            if (++turns_ == turn) doing();
        };
    }
    void damage() const {
        catalogue.allowBadKeys();
        catalogue.addCategory({.key = 1, .name = u"A"_s});
        catalogue.addCategory({.key = 1, .name = u"B"_s, .order = 2});
        catalogue.addCategory({.key = 2, .name = u"C"_s, .order = 3});
    }

private:
    int turns_ = 0;
};

constexpr int servingsOfARead = 7; // each display three, and one to restore the panes
constexpr int servingsOfATreeRead = 4;

} // namespace

TEST_F(InterruptedRead, theControlMayBeDeletedAtEveryServing) {
    for (int turn = 1; turn <= servingsOfARead; ++turn) {
        makeBrowser();
        bool deleted = false;
        int served = 0;
        pump.whenServed = [&] {
            if (++served != turn) return;
            browser.reset();
            deleted = true;
        };
        const Long count = browser->Populate();
        EXPECT_TRUE(deleted) << turn;
        EXPECT_EQ(count, turn < servingsOfARead ? 0 : 3) << turn;
        EXPECT_EQ(takeReports(), QStringList()) << turn;
        EXPECT_EQ(screen().MousePointer(), vbDefault) << turn;
    }
}

TEST_F(InterruptedRead, theControlMayBeDeletedWhileAFilterIsSet) {
    for (int turn = 1; turn <= servingsOfATreeRead; ++turn) {
        pump.whenServed = nullptr;
        makeBrowser();
        browser->Populate();
        int served = 0;
        pump.whenServed = [&] {
            if (++served == turn) browser.reset();
        };
        browser->setWorkgroupFilter(u"IN(1)"_s);
        EXPECT_EQ(browser, nullptr) << turn;
        EXPECT_EQ(takeReports(), QStringList()) << turn;
        EXPECT_EQ(screen().MousePointer(), vbDefault) << turn;
    }
}

TEST_F(InterruptedRead, nothingOfTheDatabaseStaysOpenBehindAClosedControl) {
    onServing(3, [this] { browser.reset(); });
    browser->Populate();
    catalogue.run(u"DROP TABLE \"ARTKAT\""_s); // refused while a statement of the table is open
    SUCCEED();
}

TEST_F(InterruptedRead, theControlMayBeDeletedDuringTheQuestion) {
    damage();
    user.whileShown = [this] { browser.reset(); };
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(user.shown.size(), 1);
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_EQ(screen().MousePointer(), vbDefault);
}

TEST_F(InterruptedRead, theControlMayBeDeletedByAHandlerOfItsEvents) {
    QObject::connect(browser.get(), &ArtCatBrowser::ItemSelected, [this] { browser.reset(); });
    browser->Populate();
    EXPECT_EQ(browser, nullptr);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(41, 2)"_s}));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(InterruptedRead, populateInsideARead) {
    for (int turn = 1; turn <= servingsOfARead; ++turn) {
        makeBrowser();
        Long inner = 0;
        int served = 0;
        pump.whenServed = [&] {
            if (++served == turn) inner = browser->Populate();
        };
        EXPECT_EQ(browser->Populate(), 3) << turn;
        EXPECT_EQ(inner, 3) << turn;
        EXPECT_EQ(tree().Nodes().Count(), 3) << turn;
        EXPECT_TRUE(tree().isVisibleTo(browser.get())) << turn;
        EXPECT_EQ(takeReports(), QStringList()) << turn;
    }
}

TEST_F(InterruptedRead, aReadDuringTheQuestionEndsTheOlderOne) {
    damage();
    user.answers = {vbYes, vbNo}; // the inner read asks as well, and gets the second answer
    bool once = true;
    user.whileShown = [&] {
        if (!std::exchange(once, false)) return;
        catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategoriename\" = 'B'"_s);
        EXPECT_EQ(browser->Populate(), 2);
    };
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(user.shown.size(), 1);
    EXPECT_EQ(treeLines(), (QStringList{u"001 - A"_s, u"003 - C"_s}));
    EXPECT_EQ(treePanel(), u"2 Kategorien"_s);
    EXPECT_EQ(events.take(), (QStringList{u"ItemSelected(1, 2)"_s, u"ItemClick(A-1, 1, 2)"_s}));
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(InterruptedRead, theDatabaseMayBeClosedDuringTheQuestion) {
    damage();
    user.whileShown = [this] { catalogue.database()->Close(); };
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_LE(user.shown.size(), 5) << "no endless row of questions";
    EXPECT_EQ(screen().MousePointer(), vbDefault);
    EXPECT_TRUE(tree().isVisibleTo(browser.get()));
}

TEST_F(InterruptedRead, theBackendMayBeTakenAwayDuringARead) {
    onServing(3, [this] { browser->setBackend({}); });
    EXPECT_EQ(browser->Populate(), 0);
    EXPECT_EQ(takeReports(), (QStringList{u"PopulateLVArt: 91"_s, u"X_PopulateTV: 91"_s}));
}
