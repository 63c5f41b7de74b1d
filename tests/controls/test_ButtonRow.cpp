#include "controls/ButtonBar.h"
#include "controls/Extender.h"
#include "controls/Toolbar.h"
#include "support/Printing.h"

#include <QTest>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class ButtonBarTest : public ::testing::Test {
protected:
    ButtonBarTest() {
        bar.Button(16).setCaption(u"&OK"_s);
        bar.Button(8).setCaption(u"&Abbrechen"_s);
        bar.arrange();
        QObject::connect(&bar, &ButtonBar::Click, &bar, [this](Long number) { clicks += number; });
        form.show();
    }

    QWidget form;
    ButtonBar bar{&form};
    QList<Long> clicks;
};

} // namespace

TEST_F(ButtonBarTest, ButtonsAreAddressedByNumber) {
    EXPECT_EQ(bar.Button(16).Caption(), u"&OK"_s);
    EXPECT_EQ(bar.Button(16).accessibleName(), u"OK"_s);
    bar.Button(8).setToolTipText(u"weg"_s);
    EXPECT_EQ(bar.Button(8).ToolTipText(), u"weg"_s);
    EXPECT_EQ(bar.Button(8).accessibleDescription(), u"weg"_s);
    EXPECT_EQ(errorOf([&] { bar.Button(24); }), 9);
}

TEST_F(ButtonBarTest, APressGivesTheNumber) {
    QTest::mouseClick(&bar.Button(8), Qt::LeftButton);
    bar.click(16);
    EXPECT_EQ(clicks, (QList<Long>{8, 16}));
}

TEST_F(ButtonBarTest, OnlyVisibleAndEnabledButtonsCount) {
    bar.Button(16).setEnabled(false);
    bar.Button(8).setVisible(false);
    EXPECT_FALSE(bar.Button(16).Enabled());
    EXPECT_FALSE(bar.Button(8).Visible());
    bar.click(16);
    bar.click(8);
    QTest::mouseClick(&bar.Button(16), Qt::LeftButton);
    EXPECT_EQ(clicks, QList<Long>());
    bar.Button(16).setEnabled(true);
    bar.Button(8).setVisible(true);
    bar.click(16);
    bar.click(8);
    EXPECT_EQ(clicks, (QList<Long>{16, 8}));
}

TEST_F(ButtonBarTest, ShowsTheSumOfItsButtons) {
    EXPECT_EQ(bar.ShowButtons(), 24);
    const Single both = bar.Width();
    bar.setShowButtons(8);
    EXPECT_EQ(bar.ShowButtons(), 8);
    EXPECT_LT(bar.Width(), both);
    bar.setShowButtons(0);
    EXPECT_EQ(bar.ShowButtons(), 0);
    EXPECT_EQ(bar.Width(), 0);
    bar.setShowButtons(24);
    EXPECT_EQ(bar.Width(), both);
}

TEST_F(ButtonBarTest, ArrangesItsButtonsSideBySide) {
    const QRect confirm = bar.Button(16).geometry();
    const QRect cancel = bar.Button(8).geometry();
    EXPECT_LT(confirm.right(), cancel.left());
    EXPECT_EQ(confirm.size(), cancel.size());
    EXPECT_EQ(confirm.top(), cancel.top());
    EXPECT_GE(cancel.width(), bar.Button(8).sizeHint().width());
    EXPECT_TRUE(bar.rect().contains(cancel));
}

TEST_F(ButtonBarTest, GrowsWithACaption) {
    const Single before = bar.Width();
    bar.Button(8).setCaption(u"Alle Änderungen verwerfen"_s);
    QCoreApplication::sendPostedEvents(&bar, QEvent::LayoutRequest);
    EXPECT_GT(bar.Width(), before);
}

TEST_F(ButtonBarTest, KeepsItsPlaceInTwips) {
    bar.setLeft(307.5);
    bar.setTop(450);
    EXPECT_EQ(bar.Left(), 307.5);
    EXPECT_EQ(bar.Top(), 450);
    EXPECT_EQ(bar.y(), 30);
    EXPECT_EQ(bar.Height(), bar.height() * 15);
}

TEST_F(ButtonBarTest, TakesNoFocusAndNoKeys) {
    EXPECT_EQ(bar.Button(16).focusPolicy(), Qt::NoFocus);
    EXPECT_TRUE(bar.Button(16).shortcut().isEmpty());
    EXPECT_TRUE(bar.Button(16).isDefault());
}

TEST(Toolbar, ButtonsAreReachedByKey) {
    QWidget form;
    Toolbar bar(&form);
    bar.addButton(u"OK"_s, u"&OK"_s, u"Los"_s);
    bar.addButton(u"Cancel"_s, u"&Abbrechen"_s, u"Weg"_s);
    EXPECT_EQ(bar.Buttons(u"ok"_s).Caption(), u"&OK"_s);
    EXPECT_EQ(bar.Buttons(u"Cancel"_s).ToolTipText(), u"Weg"_s);
    EXPECT_EQ(errorOf([&] { bar.Buttons(u"Help"_s); }), 35601);
    EXPECT_EQ(errorOf([&] { bar.addButton(u"CANCEL"_s, {}, {}); }), 35602);
}

TEST(Toolbar, TellsWhichButtonWasPressed) {
    QWidget form;
    Toolbar bar(&form);
    QStringList pressed;
    QObject::connect(&bar, &Toolbar::ButtonClick, &bar, [&](const QString& key) { pressed += key; });
    bar.addButton(u"OK"_s, u"&OK"_s, {});
    bar.addButton(u"Cancel"_s, u"&Abbrechen"_s, {});
    form.show();
    QTest::mouseClick(&bar.Buttons(u"Cancel"_s), Qt::LeftButton);
    QTest::keyClick(&bar.Buttons(u"OK"_s), Qt::Key_Return);
    QTest::keyClick(&bar.Buttons(u"OK"_s), Qt::Key_Space);
    bar.Buttons(u"Cancel"_s).setEnabled(false);
    QTest::mouseClick(&bar.Buttons(u"Cancel"_s), Qt::LeftButton);
    EXPECT_EQ(pressed, (QStringList{u"Cancel"_s, u"OK"_s, u"OK"_s}));
    EXPECT_EQ(bar.Buttons(u"OK"_s).focusPolicy(), Qt::TabFocus);
}

} // namespace mkl
