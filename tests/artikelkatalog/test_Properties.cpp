// What the program tells of an article or a category.
#include "apps/artikelkatalog/MainWindow.h"
#include "apps/artikelkatalog/PropertiesText.h"
#include "browser/ArtCatBrowser.h"
#include "support/CatalogueFixture.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"
#include "support/ScriptedPump.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

const QString shop = u"41 Schrauben: 12 Senkkopf, 30 Ösen\n"
                     "  411 Holz {inaktiv}: 12 Senkkopf\n"
                     "50 Ahlen: 7 Ahle, 12 Senkkopf\n"_s;

QString textOf(const CatalogueFixture& catalogue, Long key, acbPanes pane) {
    return propertiesText(*catalogue.database(), key, pane);
}

} // namespace

TEST(Properties, AnArticleTellsItsCategoriesByTheirNames) {
    const CatalogueFixture catalogue(shop);
    const QString expected = u"Artikel 12\nName: Senkkopf\nZustand: aktiv\n\nIn Kategorie 'Ahlen' an Position 2\n"
                             "In Kategorie 'Holz' an Position 1\nIn Kategorie 'Schrauben' an Position 1"_s;
    EXPECT_EQ(textOf(catalogue, 12, acbPaneArticlePool), expected);
    EXPECT_EQ(textOf(catalogue, 12, acbPaneArticleList), expected);
}

TEST(Properties, AnArticleWithoutACategory) {
    const CatalogueFixture catalogue(shop);
    catalogue.addArticle(99, u"Zange %1"_s);
    EXPECT_EQ(textOf(catalogue, 99, acbPaneArticlePool),
              u"Artikel 99\nName: Zange %1\nZustand: aktiv\n\nIn keiner Kategorie"_s);
}

TEST(Properties, OfManyCategoriesTheFirstAreTold) {
    const CatalogueFixture catalogue(shop);
    for (Long key = 100; key < 130; ++key) {
        catalogue.addCategory({.key = key, .name = u"K"_s});
        catalogue.assign(30, key, 1);
    }
    const QStringList lines = textOf(catalogue, 30, acbPaneArticlePool).split(u'\n');
    EXPECT_EQ(lines.size(), 4 + 15 + 1);
    EXPECT_EQ(lines.last(), u"…"_s);
}

TEST(Properties, ACategoryTellsWhatItHolds) {
    const CatalogueFixture catalogue(shop);
    EXPECT_EQ(textOf(catalogue, 41, acbPaneCategoryTree),
              u"Kategorie 41\nName: Schrauben\nBezeichnung: \nZustand: aktiv\nUnterkategorien: 1\nArtikel: 2"_s);
    EXPECT_TRUE(textOf(catalogue, 411, acbPaneCategoryTree).contains(u"Zustand: inaktiv"_s));
}

TEST(Properties, WhatIsGoneHasNone) {
    const CatalogueFixture catalogue(shop);
    EXPECT_EQ(textOf(catalogue, 999, acbPaneCategoryTree), QString());
    EXPECT_EQ(textOf(catalogue, 999, acbPaneArticlePool), QString());
}

TEST(Properties, TheWindowShowsThemWhenTheBrowserAsksForThem) {
    const CatalogueFixture catalogue(shop);
    const QTemporaryDir folder;
    QSettings settings(folder.filePath(u"settings.ini"_s), QSettings::IniFormat);
    ScriptedPump pump;
    ScriptedAsker user;
    MainWindow window(settings);
    ASSERT_TRUE(window.showFile(catalogue.file()));
    Q_EMIT window.browser()->MenuPropertiesClick(50, acbPaneCategoryTree);
    EXPECT_TRUE(user.shown.isEmpty()); // not within the event
    QApplication::processEvents();
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_EQ(user.shown.first().flags, vbInformation);
    EXPECT_TRUE(user.shown.first().text.startsWith(u"Kategorie 50\nName: Ahlen\n"_s));

    Q_EMIT window.browser()->MenuPropertiesClick(999, acbPaneArticlePool);
    QApplication::processEvents();
    ASSERT_EQ(user.shown.size(), 2);
    EXPECT_EQ(user.shown.last().flags, vbExclamation);
    EXPECT_TRUE(user.shown.last().text.startsWith(u"Der Datensatz wurde nicht gefunden."_s));

    catalogue.run(u"DROP TABLE ARTKAT"_s);
    Q_EMIT window.browser()->MenuPropertiesClick(12, acbPaneArticlePool);
    QApplication::processEvents();
    ASSERT_EQ(user.shown.size(), 3);
    EXPECT_EQ(user.shown.last().text, u"Die Eigenschaften konnten nicht gelesen werden."_s);
    EXPECT_FALSE(user.shown.last().detail.isEmpty());
}
