// The program on a catalogue of a real server that goes away and comes back.
#include "ScriptedKeyStore.h"
#include "ServerCatalogue.h"
#include "controls/NoticeBar.h"
#include "desktop/EditingWindow.h"
#include "support/PostgresServer.h"

#include <QAction>
#include <QLineEdit>

using namespace mkl;
using namespace mkl::desktop;

namespace {

class ServerWindow : public EditingWindow {
protected:
    QString makeCatalogue() override { return catalogue_.url(); }
    void SetUp() override { BrowserWindow::SetUp(); }

    NoticeBar& bar() const { return *browser().findChild<NoticeBar*>(u"Notice"_s); }
    QPoint link() const {
        const auto& button = *browser().findChild<LinkButton*>(u"NoticeAction"_s);
        return button.mapToGlobal(button.rect().center());
    }
    QByteArray categoriesNamed(const QByteArray& name) const {
        return catalogue_.run("SELECT count(*) FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategoriename\" = '" + name + "'");
    }
    static void typeInto(const QString& field, const QString& text) {
        type(text);
        const auto* const edit = dialog()->findChild<QLineEdit*>(field);
        ASSERT_TRUE(edit && waitUntil([&] { return edit->text() == text; }));
    }

    ServerCatalogue catalogue_;
    ScriptedKeyStore keys_;
};

} // namespace

TEST_F(ServerWindow, ACommandMeetsAServerThatHasGone) {
    selectCategory(category(20));
    const Long nodes = tree_->Nodes().Count();
    doAndAnswer([] { press(u"Insert"_s); }, {[] {
                                                 typeInto(u"txtCatName"_s, u"Muttern"_s);
                                                 PostgresServer::instance().stop();
                                                 press(u"alt+o"_s);
                                             },
                                             [] {
                                                 keepPicture(u"server-lost-report"_s);
                                                 press(u"Return"_s);
                                             }});
    EXPECT_EQ(tree_->Nodes().Count(), nodes);
    ASSERT_TRUE(waitUntil([&] { return bar().isVisible(); }));
    EXPECT_EQ(bar().Text(), u"Die Verbindung zum Server ist unterbrochen."_s);
    EXPECT_EQ(bar().Action(), u"Erneut verbinden"_s);
    keepPicture(u"guide-server-lost"_s, window_.frameGeometry());

    PostgresServer::instance().start();
    EXPECT_EQ(categoriesNamed("Muttern"), "0");
    catalogue_.rename(20, u"Geräte"_s); // what others did meanwhile shows too
    click(link());
    ASSERT_TRUE(waitUntil([&] { return category(20)->Text().endsWith(u"Geräte"_s); }));
    EXPECT_TRUE(waitUntil([&] { return !bar().isVisible(); }));

    selectCategory(category(20));
    doAndAnswer([] { press(u"Insert"_s); }, {[] {
                    typeInto(u"txtCatName"_s, u"Muttern"_s);
                    press(u"alt+o"_s);
                }});
    EXPECT_TRUE(waitUntil([&] { return tree_->Nodes().Count() == nodes + 1; }));
    EXPECT_EQ(categoriesNamed("Muttern"), "1");
    EXPECT_FALSE(bar().isVisible());
}

TEST_F(ServerWindow, ALossIsToldBeforeAnybodyNeedsTheServer) {
    PostgresServer::instance().stop();
    ASSERT_TRUE(waitUntil([&] { return bar().isVisible(); }));
    EXPECT_EQ(bar().Action(), u"Erneut verbinden"_s);
    EXPECT_EQ(tree_->Nodes().Count(), 3);
    // Still away: told, and nothing on screen is lost.
    doAndAnswer([this] { click(link()); }, {[] { press(u"Return"_s); }});
    EXPECT_EQ(tree_->Nodes().Count(), 3);
    ASSERT_TRUE(waitUntil([&] { return bar().isVisible(); }));
    PostgresServer::instance().start();
    click(link());
    EXPECT_TRUE(waitUntil([&] { return !bar().isVisible(); }));
    EXPECT_EQ(tree_->Nodes().Count(), 3);
}

TEST_F(ServerWindow, WhatOthersStoreIsTold) {
    catalogue_.rename(20, u"Geräte"_s);
    ASSERT_TRUE(waitUntil([&] { return bar().isVisible(); }));
    EXPECT_EQ(bar().Text(), u"Daten wurden geändert"_s);
    EXPECT_TRUE(category(20)->Text().endsWith(u"Werkzeug"_s));
    click(link());
    EXPECT_TRUE(waitUntil([&] { return category(20)->Text().endsWith(u"Geräte"_s); }));
    EXPECT_FALSE(bar().isVisible());
}

TEST_F(ServerWindow, TheDialogsLookRight) {
    catalogue_.addReader(u"anna"_s, u"Geheim-17"_s);
    const auto fillIn = [this](const char* field, const QString& text) {
        dialog()->findChild<QLineEdit*>(QLatin1StringView(field))->setText(text);
    };
    doAndAnswer([this] { window_.findChild<QAction*>(u"OpenServer"_s)->trigger(); },
                {[&] {
                     fillIn("Host", u"server1"_s);
                     fillIn("Database", u"katalog"_s);
                     fillIn("User", u"anna"_s);
                     keepPicture(u"guide-server"_s, dialog()->frameGeometry());
                     fillIn("Host", catalogue_.folder());
                     fillIn("Database", catalogue_.database());
                     press(u"alt+o"_s);
                 },
                 [] {
                     type(u"falsch"_s);
                     keepPicture(u"guide-password"_s, dialog()->frameGeometry());
                     press(u"Return"_s);
                 },
                 [] {
                     type(u"Geheim-17"_s);
                     keepPicture(u"password-wrong"_s, dialog()->frameGeometry());
                     press(u"Return"_s);
                 }});
    ASSERT_TRUE(waitUntil([&] { return window_.windowTitle().contains(u" auf diesem Rechner"_s); }));
    tree_ = browser().CategoryTreeView();
    ASSERT_TRUE(waitUntil([&] { return tree_->Nodes().Count() == 3; }));
    // Who may only read is told so, and nothing changes.
    selectCategory(category(20));
    doAndAnswer([] { press(u"F2"_s); }, {[] {
                                             type(u"Anders"_s);
                                             press(u"Return"_s);
                                         },
                                         [] {
                                             keepPicture(u"server-reader-report"_s);
                                             press(u"Return"_s);
                                         }});
    EXPECT_EQ(catalogue_.nameOf(20), u"Werkzeug"_s);
    EXPECT_TRUE(category(20)->Text().endsWith(u"Werkzeug"_s));
}
