// The filters of the pool's menu.
#include "browser/AssignmentHost.h"

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse\n"
                     "50 Werkzeug: 7 Ahle, 12 Senkkopf\n"_s;

// 7 and 30 are inactive, 30 and 31 stand in no category.
class PoolFiltersTest : public AssignmentHost {
protected:
    PoolFiltersTest()
        : AssignmentHost(shop) {
        catalogue.addArticle(30, u"Übrig"_s);
        catalogue.addArticle(31, u"Rest"_s);
        setActive(u"\"Artikel-Schlüssel\" IN (7, 30)"_s, false);
        browser->Populate();
        events.take();
    }

    void setActive(const QString& which, bool active) const {
        catalogue.run(u"UPDATE ARTIKEL SET Aktiv = %1 WHERE %2"_s.arg(active ? -1 : 0).arg(which));
    }
    bool isChecked(const QString& entry) const { return hub().ui.menus.Item(entry).Checked(); }
    /// The keys of the checked entries.
    QStringList checked() const {
        QStringList names;
        for (const MenuEntry& entry : hub().ui.menus)
            if (entry.Checked()) names.append(entry.Name());
        return names;
    }
    /// The messages as "text|flags".
    QStringList takeMessages() {
        QStringList lines;
        for (const MessageBox& box : std::exchange(user.shown, {}))
            lines.append(box.text + u'|' + QString::number(box.flags));
        return lines;
    }
    PoolFilters& filters() const { return *hub().poolFilters; }

    static inline const QStringList allRows{u"00007"_s, u"00012"_s, u"00030"_s, u"00031"_s, u"04711"_s};
    static inline const QStringList activeRows{u"00012"_s, u"00031"_s, u"04711"_s};
    static inline const QStringList inactiveRows{u"00007"_s, u"00030"_s};
};

} // namespace

TEST_F(PoolFiltersTest, activeOnly) {
    filters().KLVArt_Active();
    EXPECT_EQ(textsOf(pool()), activeRows);
    EXPECT_EQ(checked(), QStringList{u"KLVArt_Active"_s});
    EXPECT_EQ(pool().SelectedItem(), pool().ListItems().Item(1));
    EXPECT_EQ(panel(u"LVArt"_s), u"3 Artikel / 1 ausgewählt"_s);
    filters().KLVArt_Active();
    EXPECT_EQ(textsOf(pool()), allRows);
    EXPECT_EQ(checked(), QStringList());
    EXPECT_EQ(takeMessages(), QStringList());
}

TEST_F(PoolFiltersTest, theReadShowsItsProgress) {
    QStringList shown;
    pump.whenServed = [&] { shown.append(constituent<QLabel>(u"lblStatus"_s).text()); };
    filters().KLVArt_Active();
    EXPECT_TRUE(shown.contains(u"Artikel einlesen ..."_s)) << shown.join(u'|').toStdString();
}

TEST_F(PoolFiltersTest, activeAndInactiveExcludeEachOther) {
    filters().KLVArt_InActive();
    EXPECT_EQ(textsOf(pool()), inactiveRows);
    filters().KLVArt_Active();
    EXPECT_EQ(checked(), QStringList{u"KLVArt_Active"_s});
    EXPECT_EQ(hub().articlePanes->PoolStatement().count(u"[Aktiv]"_s), 1);
    EXPECT_EQ(textsOf(pool()), activeRows);
    filters().KLVArt_InActive();
    EXPECT_EQ(checked(), QStringList{u"KLVArt_InActive"_s});
    EXPECT_EQ(textsOf(pool()), inactiveRows);
    filters().KLVArt_InActive();
    EXPECT_EQ(checked(), QStringList());
    EXPECT_EQ(textsOf(pool()), allRows);
}

TEST_F(PoolFiltersTest, withoutAnActiveArticleTheFilterSwitchesItselfOff) {
    setActive(u"1 = 1"_s, false);
    filters().KLVArt_Active();
    EXPECT_EQ(takeMessages(), QStringList{u"Es gibt keine aktiven Artikel.|16"_s});
    EXPECT_EQ(checked(), QStringList());
    EXPECT_EQ(textsOf(pool()), allRows);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(PoolFiltersTest, withoutAnInactiveArticleLikewise) {
    setActive(u"1 = 1"_s, true);
    filters().KLVArt_InActive();
    EXPECT_EQ(takeMessages(), QStringList{u"Es gibt keine inaktiven Artikel.|16"_s});
    EXPECT_EQ(checked(), QStringList());
    EXPECT_EQ(textsOf(pool()), allRows);
}

TEST_F(PoolFiltersTest, theEntryIsCheckedAndThePoolEmptyWhileItsMessageShows) {
    setActive(u"1 = 1"_s, false);
    bool wasChecked = false;
    Long rows = -1;
    user.whileShown = [&] {
        wasChecked = isChecked(u"KLVArt_Active"_s);
        rows = pool().ListItems().Count();
    };
    filters().KLVArt_Active();
    EXPECT_TRUE(wasChecked);
    EXPECT_EQ(rows, 0);
}

TEST_F(PoolFiltersTest, unassignedOnly) {
    filters().KLVArt_UnCategorized();
    EXPECT_EQ(textsOf(pool()), (QStringList{u"00030"_s, u"00031"_s}));
    EXPECT_EQ(checked(), QStringList{u"KLVArt_UnCategorized"_s});
    filters().KLVArt_UnCategorized();
    EXPECT_EQ(textsOf(pool()), allRows);
    EXPECT_EQ(checked(), QStringList());
}

TEST_F(PoolFiltersTest, unassignedCombinesWithTheState) {
    filters().KLVArt_UnCategorized();
    filters().KLVArt_Active();
    EXPECT_EQ(textsOf(pool()), QStringList{u"00031"_s});
    EXPECT_EQ(checked(), (QStringList{u"KLVArt_Active"_s, u"KLVArt_UnCategorized"_s}));
    const QString statement = hub().articlePanes->PoolStatement();
    EXPECT_TRUE(statement.contains(u"Is Null) AND (ARTIKEL.[Absender-Schlüssel] Like '*') AND [Aktiv]=-1"_s))
        << statement.toStdString();
    filters().KLVArt_InActive();
    EXPECT_EQ(textsOf(pool()), QStringList{u"00030"_s});
}

TEST_F(PoolFiltersTest, withoutAnUnassignedArticleTheFilterSwitchesItselfOff) {
    catalogue.assign(30, 41, 3);
    catalogue.assign(31, 41, 4);
    filters().KLVArt_UnCategorized();
    EXPECT_EQ(takeMessages(), QStringList{u"Es gibt keine unzugeordneten Artikel.|16"_s});
    EXPECT_EQ(checked(), QStringList());
    EXPECT_EQ(textsOf(pool()), allRows);
}

// The last unassigned article went into a category: the click switches the filter off.
TEST_F(PoolFiltersTest, aPoolThatADropHasEmptiedShowsAllAgain) {
    filters().KLVArt_UnCategorized();
    catalogue.assign(30, 41, 3);
    catalogue.assign(31, 41, 4);
    pool().ListItems().Clear();
    filters().KLVArt_UnCategorized();
    EXPECT_EQ(textsOf(pool()), allRows);
    EXPECT_EQ(checked(), QStringList());
    EXPECT_EQ(takeMessages(), QStringList());
}

TEST_F(PoolFiltersTest, markedOnly) {
    select(pool(), {1, 3, 5});
    filters().KLVArt_Marked();
    EXPECT_EQ(rowsOf(pool()),
              (QStringList{u"A7|7|00007|Ahle|Off"_s, u"A30|30|00030|Übrig|Off"_s, u"A4711|4711|04711|Linse|On"_s}));
    EXPECT_EQ(checked(), QStringList{u"KLVArt_Marked"_s});
    EXPECT_EQ(pool().SelectedItem(), poolRow(7));
    EXPECT_EQ(pool().SelectedCount(), 1);
    EXPECT_EQ(browser->Selected(acbPaneArticlePool), 7);
    EXPECT_EQ(panel(u"LVArt"_s), u"3 Artikel / 1 ausgewählt"_s);
    EXPECT_EQ(events.take(), QStringList());
    filters().KLVArt_Marked();
    EXPECT_EQ(textsOf(pool()), allRows);
    EXPECT_EQ(checked(), QStringList());
    EXPECT_EQ(screen().MousePointer(), vbDefault);
}

TEST_F(PoolFiltersTest, markedOnlyShowsWhatIsStoredNow) {
    select(pool(), {1, 2, 5});
    setActive(u"\"Artikel-Schlüssel\" = 7"_s, true);
    catalogue.run(u"UPDATE ARTIKEL SET Artikelname = 'Zylinder' WHERE \"Artikel-Schlüssel\" = 12"_s);
    catalogue.run(u"DELETE FROM ARTIKEL WHERE \"Artikel-Schlüssel\" = 4711"_s);
    filters().KLVArt_Marked();
    EXPECT_EQ(rowsOf(pool()), (QStringList{u"A7|7|00007|Ahle|On"_s, u"A12|12|00012|Zylinder|On"_s}));
}

TEST_F(PoolFiltersTest, markedOnlyWithNothingSelectedKeepsThePool) {
    pool().deselectOthers({});
    filters().KLVArt_Marked();
    EXPECT_EQ(textsOf(pool()), allRows);
    EXPECT_EQ(pool().SelectedItem(), poolRow(7));
    EXPECT_EQ(panel(u"LVArt"_s), u"5 Artikel / 1 ausgewählt"_s);
    EXPECT_TRUE(isChecked(u"KLVArt_Marked"_s)); // in any case
}

TEST_F(PoolFiltersTest, markedIsNoPartOfTheStatement) {
    select(pool(), {1, 2});
    filters().KLVArt_Marked();
    browser->RefreshPane(acbPaneArticlePool);
    EXPECT_EQ(textsOf(pool()), allRows);
    EXPECT_TRUE(isChecked(u"KLVArt_Marked"_s));
    filters().KLVArt_UnCategorized();
    EXPECT_FALSE(isChecked(u"KLVArt_Marked"_s));
    tick(u"KLVArt_Marked"_s);
    filters().KLVArt_InActive();
    EXPECT_FALSE(isChecked(u"KLVArt_Marked"_s));
}

TEST_F(PoolFiltersTest, markedOnlyLeavesTheOtherFiltersAlone) {
    filters().KLVArt_Active();
    select(pool(), {1, 3});
    filters().KLVArt_Marked();
    EXPECT_EQ(checked(), (QStringList{u"KLVArt_Active"_s, u"KLVArt_Marked"_s}));
    filters().KLVArt_Marked();
    EXPECT_EQ(textsOf(pool()), activeRows);
}

TEST_F(PoolFiltersTest, thePoolsFilterHoldsInAllOfThem) {
    browser->setFilter(acbPaneArticlePool, u"[Artikel-Schlüssel]<31"_s);
    filters().KLVArt_InActive();
    EXPECT_EQ(textsOf(pool()), inactiveRows);
    browser->setFilter(acbPaneArticlePool, u"[Artikelname] Like 'Ü*'"_s);
    filters().KLVArt_InActive();
    EXPECT_EQ(textsOf(pool()), QStringList{u"00030"_s});
}

TEST_F(PoolFiltersTest, aFailureIsReportedUnderTheNameOfTheEntry) {
    catalogue.run(u"DROP TABLE ARTIKEL"_s);
    select(pool(), {1, 2});
    filters().KLVArt_Marked();
    EXPECT_EQ(takeReports(), QStringList{u"MarkedOnly: 3078"_s});
    EXPECT_FALSE(isChecked(u"KLVArt_Marked"_s));
    EXPECT_EQ(screen().MousePointer(), vbDefault);
}

TEST_F(PoolFiltersTest, aReadThatFailsReportsByItself) {
    catalogue.run(u"DROP TABLE ARTIKEL"_s);
    filters().KLVArt_Active();
    EXPECT_EQ(takeReports(), (QStringList{u"PopulateLVArt: 3078"_s, u"PopulateLVArt: 3078"_s}));
    EXPECT_EQ(takeMessages(), QStringList{u"Es gibt keine aktiven Artikel.|16"_s});
    filters().KLVArt_UnCategorized();
    EXPECT_EQ(takeReports().size(), 2);
    EXPECT_EQ(checked(), QStringList());
}

TEST_F(PoolFiltersTest, theHostMayCloseTheControlWhileAMessageShows) {
    setActive(u"1 = 1"_s, false);
    user.whileShown = [this] { browser.reset(); };
    const auto closing = hub().shared_from_this();
    closing->poolFilters->KLVArt_Active();
    EXPECT_EQ(browser, nullptr);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(PoolFiltersTest, theHostMayCloseTheControlDuringTheRead) {
    for (const auto& click : {&PoolFilters::KLVArt_Active, &PoolFilters::KLVArt_InActive, &PoolFilters::KLVArt_Marked,
                              &PoolFilters::KLVArt_UnCategorized}) {
        pump.whenServed = nullptr;
        makeBrowser();
        browser->Populate();
        tick(u"KLVArt_Marked"_s);
        pump.whenServed = [this] { browser.reset(); };
        const auto closing = hub().shared_from_this();
        ((*closing->poolFilters).*click)();
        EXPECT_EQ(browser, nullptr);
        EXPECT_EQ(takeReports(), QStringList());
        EXPECT_EQ(screen().MousePointer(), vbDefault);
    }
}
