#include "controls/StatusBar.h"

#include "controls/ToolTip.h"
#include "support/Printing.h"

#include <QSignalSpy>
#include <QTest>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class StatusBarTest : public ::testing::Test {
protected:
    StatusBarTest() {
        bar.resize(600, 24);
        for (const auto& key : {u"LVArt"_s, u"TV"_s, u"LV"_s})
            bar.addPanel(key);
        bar.show();
    }
    StatusBar bar;
};

} // namespace

TEST_F(StatusBarTest, PanelsByKeyWithoutCase) {
    bar.Panels(u"TV"_s).setText(u"12 Kategorien"_s);
    EXPECT_EQ(bar.Panels(u"tv"_s).Text(), u"12 Kategorien"_s);
    EXPECT_EQ(bar.Panels(u"TV"_s).Key(), u"TV"_s);
    EXPECT_EQ(bar.PanelCount(), 3);
    EXPECT_EQ(errorOf([&] { bar.Panels(u"X"_s); }), 35601);
    EXPECT_EQ(errorOf([&] { bar.addPanel(u"lv"_s); }), 35602);
}

TEST_F(StatusBarTest, TheLastVisiblePanelTakesWhatIsLeft) {
    bar.Panels(u"LVArt"_s).setWidth(3000);
    bar.Panels(u"TV"_s).setWidth(1500);
    EXPECT_EQ(bar.Panels(u"LVArt"_s).geometry(), QRect(0, 0, 200, 24));
    EXPECT_EQ(bar.Panels(u"TV"_s).geometry(), QRect(200, 0, 100, 24));
    EXPECT_EQ(bar.Panels(u"LV"_s).geometry(), QRect(300, 0, 300, 24));
    bar.Panels(u"LVArt"_s).setVisible(false);
    EXPECT_FALSE(bar.Panels(u"LVArt"_s).Visible());
    EXPECT_EQ(bar.Panels(u"TV"_s).geometry(), QRect(0, 0, 100, 24));
    bar.Panels(u"LV"_s).setVisible(false);
    EXPECT_EQ(bar.Panels(u"TV"_s).geometry(), QRect(0, 0, 600, 24));
    EXPECT_EQ(bar.Panels(u"TV"_s).Width(), 1500);
    bar.resize(500, 20);
    EXPECT_EQ(bar.Panels(u"TV"_s).geometry(), QRect(0, 0, 500, 20));
}

TEST_F(StatusBarTest, LongTextsAreCutAndShownInFullAsToolTip) {
    StatusPanel& panel = bar.Panels(u"TV"_s);
    panel.setWidth(1500);
    const QString text = u"12 Artikel in Kategorie '<Schrauben & Muttern aus Edelstahl>' (Kat-Nr. 41)"_s;
    panel.setText(text);
    EXPECT_EQ(panel.Text(), text);
    EXPECT_NE(static_cast<const QLabel&>(panel).text(), text);
    EXPECT_EQ(panel.toolTip(), plainToolTip(text));
    EXPECT_EQ(panel.accessibleName(), text);
    panel.setText(u"kurz"_s);
    EXPECT_EQ(panel.toolTip(), QString());
}

TEST_F(StatusBarTest, ClicksOnPanelsAndBesideThem) {
    QStringList events;
    QObject::connect(&bar, &StatusBar::PanelClick,
                     [&](StatusPanel* panel) { events << u"PanelClick "_s + panel->Key(); });
    QObject::connect(&bar, &StatusBar::PanelDblClick,
                     [&](StatusPanel* panel) { events << u"PanelDblClick "_s + panel->Key(); });
    QObject::connect(&bar, &StatusBar::Click, [&] { events << u"Click"_s; });
    QObject::connect(&bar, &StatusBar::DblClick, [&] { events << u"DblClick"_s; });
    QTest::mouseClick(&bar.Panels(u"TV"_s), Qt::LeftButton);
    EXPECT_EQ(events, QStringList{u"PanelClick TV"_s});
    events.clear();
    QTest::mouseClick(&bar.Panels(u"TV"_s), Qt::RightButton);
    QTest::mouseDClick(&bar.Panels(u"TV"_s), Qt::LeftButton);
    QTest::mouseRelease(&bar.Panels(u"TV"_s), Qt::LeftButton);
    EXPECT_EQ(events, QStringList{u"PanelDblClick TV"_s});
    events.clear();
    for (const auto& key : {u"LVArt"_s, u"TV"_s, u"LV"_s})
        bar.Panels(key).setVisible(false);
    QTest::mouseClick(&bar, Qt::LeftButton);
    EXPECT_EQ(events, QStringList{u"Click"_s});
    events.clear();
    QTest::mouseDClick(&bar, Qt::LeftButton);
    QTest::mouseRelease(&bar, Qt::LeftButton);
    EXPECT_EQ(events, QStringList{u"DblClick"_s});
}

TEST_F(StatusBarTest, NegativeWidthsHidePanels) {
    bar.Panels(u"LVArt"_s).setWidth(-3000);
    EXPECT_EQ(bar.Panels(u"LVArt"_s).width(), 0);
    EXPECT_EQ(bar.Panels(u"LVArt"_s).Width(), -3000);
}

TEST_F(StatusBarTest, ALineStandsOverThePanels) {
    bar.Panels(u"TV"_s).setText(u"12 Kategorien"_s);
    const auto& line = *bar.findChild<QLabel*>(u"Overlay"_s);
    const QImage before = bar.grab().toImage();
    EXPECT_EQ(bar.Overlay(), QString());
    EXPECT_TRUE(line.isHidden());
    bar.setOverlay(u"Kopieren nach 'A&B'"_s);
    EXPECT_EQ(bar.Overlay(), u"Kopieren nach 'A&B'"_s);
    EXPECT_EQ(bar.accessibleDescription(), bar.Overlay());
    EXPECT_EQ(line.text(), bar.Overlay());
    EXPECT_EQ(line.geometry(), bar.rect());
    EXPECT_EQ(bar.childAt(120, 10), &bar.Panels(u"TV"_s)); // the mouse meets what is below
    EXPECT_NE(bar.grab().toImage(), before);
    EXPECT_EQ(bar.Panels(u"TV"_s).Text(), u"12 Kategorien"_s);
    EXPECT_EQ(bar.PanelCount(), 3);
    bar.setOverlay(QString(400, u'W'));
    EXPECT_LT(line.text().size(), 400);
    bar.setOverlay({});
    EXPECT_TRUE(line.isHidden());
    EXPECT_EQ(bar.grab().toImage(), before);
}

} // namespace mkl
