// Every entry of the menus and what it does to the catalogue.
#include "browser/AssignmentHost.h"
#include "browser/dialogs/frmAddArticleFind.h"
#include "support/FixedReplica.h"
#include "support/ScriptedForms.h"
#include "support/ScriptedPopups.h"

#include <QLineEdit>
#include <QTest>

using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 4711 Linse, 30 Ösen\n"
                     "50 Werkzeug: 7 Ahle\n"_s;

class MenuCommandsTest : public AssignmentHost {
protected:
    MenuCommandsTest()
        : AssignmentHost(shop) {
        events.record(browser.get(), &ArtCatBrowser::MenuPropertiesClick, u"MenuPropertiesClick"_s);
        events.record(browser.get(), &ArtCatBrowser::Quit, u"Quit"_s);
        browser->setHelper(makeRef<FixedReplica>(3));
        browser->setCurrentSenderID(1);
        browser->show();
        show(41);
    }

    /// Opens the menu of the pane and chooses the entry.
    void choose(ItemView& view, const QString& entry) {
        ScriptedPopups popups({entry});
        QTest::keyClick(&view, Qt::Key_Menu);
    }
    void confirmWith(const QString& typed) {
        forms.answers.append([typed](QDialog& form) {
            typeText(form, typed);
            pressKey(form, Qt::Key_O, Qt::AltModifier);
        });
    }
    /// The inactive articles.
    QString inactive() const {
        QStringList keys;
        const auto rows = catalogue.database()->OpenRecordset(
            u"SELECT [Artikel-Schlüssel] FROM ARTIKEL WHERE Aktiv=0 ORDER BY 1"_s, dao::dbOpenSnapshot);
        for (; !rows->Eof(); rows->MoveNext())
            keys.append(rows->value(0).toText());
        return keys.join(u' ');
    }

    /// When the article was changed last.
    QString dateOf(Long article) const {
        const auto rows = catalogue.database()->OpenRecordset(
            u"SELECT LetzteÄnderung FROM ARTIKEL WHERE [Artikel-Schlüssel]=%1"_s.arg(article), dao::dbOpenSnapshot);
        return rows->value(0).isNull() ? u"Null"_s : rows->value(0).toText();
    }

    ScriptedForms forms;
};

} // namespace

TEST_F(MenuCommandsTest, everyEntryHasACommand) {
    QStringList parents;
    for (const MenuForm& form : menuForms())
        parents.append(form.parent.toString());
    for (const MenuForm& form : menuForms()) {
        const QString name = form.name.toString();
        EXPECT_EQ(MenuCommands::knows(name), form.caption && !parents.contains(name)) << name.toStdString();
    }
    hub().menuCommands->run(u"Unbekannt"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

// --- the tree -------------------------------------------------------------------------------------------------------

TEST_F(MenuCommandsTest, positionOfACategory) {
    confirmWith(u"2"_s);
    choose(tree(), u"kTV_NewPosition"_s);
    EXPECT_EQ(level(0), u"50@1* 41@2*"_s);
}

TEST_F(MenuCommandsTest, levelsByName) {
    user.answers = {vbYes, vbYes};
    choose(tree(), u"kTV_SortDesc"_s);
    EXPECT_EQ(level(0), u"50@1* 41@2*"_s);
    choose(tree(), u"kTV_SortInc"_s);
    EXPECT_EQ(level(0), u"41@1* 50@2*"_s);
}

TEST_F(MenuCommandsTest, aNewCategory) {
    confirmWith(u"Naegel"_s);
    choose(tree(), u"kTV_New"_s);
    EXPECT_EQ(level(0), u"41@1* 13@2* 50@3*"_s);
}

TEST_F(MenuCommandsTest, theFirstCategory) {
    catalogue.run(u"DELETE FROM \"ARTIKEL/KATEGORIEN\""_s);
    browser->RefreshPane(acbPaneCategoryTree);
    confirmWith(u"Erste"_s);
    choose(tree(), u"kTV_New"_s);
    EXPECT_EQ(level(0), u"13@1*"_s);
}

TEST_F(MenuCommandsTest, anotherName) {
    user.texts = {u"Bolzen"_s};
    choose(tree(), u"kTV_Rename"_s);
    EXPECT_EQ(node(41)->Text(), u"001 - Bolzen"_s);
}

TEST_F(MenuCommandsTest, deletion) {
    user.answers = {vbYes};
    choose(tree(), u"kTV_Delete"_s);
    EXPECT_EQ(level(0), u"50@1*"_s);
}

TEST_F(MenuCommandsTest, activationOfACategory) {
    choose(tree(), u"kTV_Activate"_s);
    EXPECT_EQ(node(41)->Image(), u"OrdnerZuOff"_s);
    choose(tree(), u"kTV_Activate"_s);
    EXPECT_EQ(node(41)->Image(), u"OrdnerZuOn"_s);
}

TEST_F(MenuCommandsTest, propertiesAndCloseOfATree) {
    choose(tree(), u"kTV_Properties"_s);
    choose(tree(), u"kTV_Close"_s);
    EXPECT_EQ(events.take(), (QStringList{u"MenuPropertiesClick(41, 2)"_s, u"Quit()"_s}));
}

// --- the list -------------------------------------------------------------------------------------------------------

TEST_F(MenuCommandsTest, positionOfAnArticle) {
    select(list(), {1});
    confirmWith(u"3"_s);
    choose(list(), u"kLV_NewPosition"_s);
    EXPECT_EQ(articles(41), u"4711@1* 30@2* 12@3*"_s);
}

TEST_F(MenuCommandsTest, deletionOfPositions) {
    user.answers = {vbYes, vbYes};
    select(list(), {2});
    choose(list(), u"kLV_DeletePosition"_s);
    EXPECT_EQ(articles(41), u"12@1* 30@2*"_s);
    select(list(), {1, 2});
    choose(list(), u"kLV_DeletePosition"_s);
    EXPECT_EQ(articles(41), QString());
}

TEST_F(MenuCommandsTest, articlesByName) {
    user.answers = {vbYes, vbYes};
    choose(list(), u"kLV_SortInc"_s);
    EXPECT_EQ(articles(41), u"4711@1* 30@2* 12@3*"_s);
    choose(list(), u"kLV_SortDesc"_s);
    EXPECT_EQ(articles(41), u"12@1* 30@2* 4711@3*"_s);
}

TEST_F(MenuCommandsTest, activationInTheList) {
    const QString before = dateOf(4711);
    select(list(), {2});
    choose(list(), u"kLV_Activate"_s);
    EXPECT_EQ(inactive(), u"4711"_s);
    EXPECT_EQ(list().ListItems().Item(2)->SmallIcon(), u"Off"_s);
    EXPECT_EQ(poolRow(4711)->SmallIcon(), u"Off"_s);
    EXPECT_TRUE(browser->Edited());
    EXPECT_EQ(dateOf(4711), before);
    EXPECT_EQ(depth(), 0);
    choose(list(), u"kLV_Activate"_s);
    EXPECT_EQ(inactive(), QString());
}

TEST_F(MenuCommandsTest, activationOfSeveralInTheList) {
    select(list(), {1, 3});
    choose(list(), u"kLV_DeActivateAll"_s);
    EXPECT_EQ(inactive(), u"12 30"_s);
    select(list(), {2, 3});
    choose(list(), u"kLV_ActivateAll"_s);
    EXPECT_EQ(inactive(), u"12"_s);
}

// Those before it stay written, those behind it too.
TEST_F(MenuCommandsTest, anArticleThatIsGoneDoesNotStopTheOthers) {
    select(list(), {1, 2, 3});
    catalogue.run(u"DELETE FROM ARTIKEL WHERE \"Artikel-Schlüssel\" = 4711"_s);
    choose(list(), u"kLV_DeActivateAll"_s);
    EXPECT_EQ(takeReports(), QStringList{u"-1072"_s});
    EXPECT_EQ(inactive(), u"12 30"_s);
}

TEST_F(MenuCommandsTest, aRowWithoutAnArticleIsPassedOver) {
    list().ListItems().Item(2)->setSubItems(1, u"keine"_s);
    select(list(), {2});
    choose(list(), u"kLV_Activate"_s);
    select(list(), {1, 2});
    choose(list(), u"kLV_DeActivateAll"_s);
    EXPECT_EQ(inactive(), u"12"_s);
    EXPECT_EQ(takeReports(), QStringList());
}

TEST_F(MenuCommandsTest, propertiesAndCloseOfTheList) {
    select(list(), {2});
    choose(list(), u"kLV_Properties"_s);
    choose(list(), u"kLV_Close"_s);
    EXPECT_EQ(events.take(), (QStringList{u"MenuPropertiesClick(4711, 1)"_s, u"Quit()"_s}));
}

// --- the pool -------------------------------------------------------------------------------------------------------

TEST_F(MenuCommandsTest, search) {
    pool().deselectOthers({});
    forms.answers = {[](QDialog& form) {
                         form.findChild<QLineEdit*>(u"txtSearch"_s)->setText(u"linse"_s);
                         pressKey(form, Qt::Key_Return);
                     },
                     [](QDialog& form) { pressKey(form, Qt::Key_W, Qt::AltModifier); }};
    choose(pool(), u"KLVArt_Find"_s);
    EXPECT_TRUE(poolRow(4711)->Selected());
    EXPECT_EQ(user.shown.size(), 1);
}

TEST_F(MenuCommandsTest, filters) {
    catalogue.run(u"UPDATE ARTIKEL SET Aktiv = 0 WHERE \"Artikel-Schlüssel\" = 30"_s);
    catalogue.addArticle(31, u"Rest"_s);
    choose(pool(), u"KLVArt_InActive"_s);
    EXPECT_EQ(textsOf(pool()), QStringList{u"00030"_s});
    choose(pool(), u"KLVArt_Active"_s);
    EXPECT_EQ(textsOf(pool()), (QStringList{u"00007"_s, u"00012"_s, u"00031"_s, u"04711"_s}));
    choose(pool(), u"KLVArt_UnCategorized"_s);
    EXPECT_EQ(textsOf(pool()), QStringList{u"00031"_s});
    choose(pool(), u"KLVArt_UnCategorized"_s);
    select(pool(), {2, 4});
    choose(pool(), u"KLVArt_Marked"_s);
    EXPECT_EQ(textsOf(pool()), (QStringList{u"00012"_s, u"04711"_s}));
    choose(pool(), u"KLVArt_Marked"_s);
    EXPECT_EQ(pool().ListItems().Count(), 4);
}

TEST_F(MenuCommandsTest, activationInThePool) {
    select(pool(), {3});
    choose(pool(), u"KLVArt_Activate"_s);
    EXPECT_EQ(inactive(), u"30"_s);
    choose(pool(), u"KLVArt_Activate"_s);
    EXPECT_EQ(inactive(), QString());
}

TEST_F(MenuCommandsTest, propertiesAndCloseOfThePool) {
    select(pool(), {3});
    choose(pool(), u"KLVArt_Properties"_s);
    choose(pool(), u"KLVArt_Close"_s);
    EXPECT_EQ(events.take(), (QStringList{u"MenuPropertiesClick(30, 0)"_s, u"Quit()"_s}));
}

// --- failures -------------------------------------------------------------------------------------------------------

// The writing reports by itself; what the click does around it is reported under the click's name.
TEST_F(MenuCommandsTest, failuresOfActivationAreReported) {
    catalogue.run(u"DROP TABLE ARTIKEL"_s);
    choose(list(), u"kLV_Activate"_s);
    choose(pool(), u"KLVArt_Activate"_s);
    EXPECT_EQ(takeReports(), (QStringList{u"LVActivate: 3078"_s, u"LVActivate: 3078"_s}));
    select(pool(), {1});
    pool().SelectedItem()->setTag(u"keine Zahl"_s);
    choose(pool(), u"KLVArt_Activate"_s);
    EXPECT_EQ(takeReports(), QStringList{u"Activate: 13"_s});
    EXPECT_FALSE(browser->Edited());
}

TEST_F(MenuCommandsTest, withoutASelectedRowNothingHappens) {
    for (ListView* view : {&pool(), &list()})
        view->ListItems().Clear();
    tree().setSelectedItem({});
    for (const MenuForm& form : menuForms()) {
        const QString name = form.name.toString();
        if (name.endsWith(u"Activate"_s) || name.endsWith(u"Properties"_s) || name.endsWith(u"All"_s))
            hub().menuCommands->run(name);
    }
    EXPECT_EQ(events.take(), QStringList());
    EXPECT_EQ(takeReports(), QStringList());
    EXPECT_FALSE(browser->Edited());
}

TEST_F(MenuCommandsTest, theHostMayCloseTheControlInAnyOfItsEvents) {
    for (const QString& entry : {u"kTV_Properties"_s, u"kLV_Properties"_s, u"KLVArt_Properties"_s, u"kTV_Close"_s}) {
        makeBrowser();
        browser->Populate();
        QObject::connect(browser.get(), &ArtCatBrowser::MenuPropertiesClick, qApp, [this] { browser.reset(); });
        QObject::connect(browser.get(), &ArtCatBrowser::Quit, qApp, [this] { browser.reset(); });
        hub().menuCommands->run(entry);
        EXPECT_EQ(browser, nullptr) << entry.toStdString();
    }
}

TEST_F(MenuCommandsTest, theHostMayCloseTheControlWhileAFailureOfSeveralShows) {
    class Closing final : public ErrorHandler {
    public:
        void ReportError(Long, const QString&, const QString&, const QString&, Long, const Variant&,
                         const Variant&) override {
            ++reports;
            if (close) std::exchange(close, nullptr)();
        }
        std::function<void()> close;
        int reports = 0;
    };
    const auto closing = makeRef<Closing>();
    const ErrorHandlerFactory former = setErrorHandlerFactory([&] { return closing; });
    makeBrowser();
    browser->Populate();
    select(list(), {1, 2, 3});
    catalogue.run(u"DELETE FROM ARTIKEL"_s);
    closing->close = [this] { browser.reset(); };
    const auto hubOfTheControl = hub().shared_from_this();
    hubOfTheControl->articleActivation->kLV_DeActivateAll();
    EXPECT_EQ(browser, nullptr);
    EXPECT_EQ(closing->reports, 1);
    setErrorHandlerFactory(former);
}
