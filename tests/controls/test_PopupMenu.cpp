#include "controls/PopupMenu.h"

#include "support/Printing.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

#include <QFrame>
#include <memory>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class PopupMenuTest : public ::testing::Test {
protected:
    PopupMenuTest() {
        widget->resize(300, 200);
        widget->show();
    }
    ~PopupMenuTest() override {
        if (QMenu* const open = menu()) open->close();
    }

    static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static QAction* action(const QString& name) {
        for (QWidget* each : QApplication::topLevelWidgets())
            if (QAction* const found = each->isVisible() ? each->findChild<QAction*>(name) : nullptr) return found;
        return nullptr;
    }
    void popUp() {
        popupRunner().popUp(*widget, form, popupPoint(*widget, 300, 150), [this](const QString& name) {
            chosen.append(name);
            openWhenChosen = menu() != nullptr;
            if (whenChosen) whenChosen();
        });
    }
    static void serve() { QCoreApplication::processEvents(); }

    const PopupMenu form{u"KTest"_s,
                         u"Menü: Probe"_s,
                         {{.name = u"first"_s, .caption = u"&Erster"_s},
                          {.name = u"bar"_s, .caption = {}},
                          {.name = u"grey"_s, .caption = u"&Grauer"_s, .enabled = false},
                          {.name = u"sub"_s,
                           .caption = u"&Unter"_s,
                           .rows = {{.name = u"off"_s, .caption = u"&Aus"_s, .checked = false},
                                    {.name = u"on"_s, .caption = u"A&n"_s, .checked = true}}}}};
    std::unique_ptr<QFrame> widget = std::make_unique<QFrame>();
    QStringList chosen;
    bool openWhenChosen = false;
    std::function<void()> whenChosen;
};

} // namespace

TEST_F(PopupMenuTest, ShowsTheRowsUnderTheirNames) {
    popUp();
    ASSERT_NE(menu(), nullptr);
    EXPECT_EQ(menu()->objectName(), u"KTest"_s);
    EXPECT_EQ(menu()->accessibleName(), u"Menü: Probe"_s);
    EXPECT_EQ(menu()->pos(), widget->mapToGlobal(QPoint(20, 10)));
    EXPECT_EQ(action(u"first"_s)->text(), u"&Erster"_s);
    EXPECT_TRUE(action(u"first"_s)->isEnabled());
    EXPECT_FALSE(action(u"first"_s)->isCheckable());
    EXPECT_TRUE(action(u"bar"_s)->isSeparator());
    EXPECT_FALSE(action(u"grey"_s)->isEnabled());
    ASSERT_NE(action(u"sub"_s)->menu(), nullptr);
    EXPECT_EQ(action(u"sub"_s)->menu()->accessibleName(), u"Unter"_s);
    EXPECT_TRUE(action(u"off"_s)->isCheckable());
    EXPECT_FALSE(action(u"off"_s)->isChecked());
    EXPECT_TRUE(action(u"on"_s)->isChecked());
}

TEST_F(PopupMenuTest, TheChoiceIsToldWhenTheMenuHasGone) {
    popUp();
    QTest::keyClick(menu(), Qt::Key_E);
    EXPECT_EQ(chosen, QStringList());
    EXPECT_EQ(menu(), nullptr);
    serve();
    EXPECT_EQ(chosen, QStringList{u"first"_s});
    EXPECT_FALSE(openWhenChosen);
}

TEST_F(PopupMenuTest, TheChoiceFromASubmenu) {
    popUp();
    QTest::keyClick(menu(), Qt::Key_U);
    ASSERT_NE(menu(), nullptr);
    QTest::keyClick(menu(), Qt::Key_N);
    serve();
    EXPECT_EQ(chosen, QStringList{u"on"_s});
}

TEST_F(PopupMenuTest, WithoutAChoiceNothingIsTold) {
    popUp();
    QTest::keyClick(menu(), Qt::Key_Escape);
    popUp();
    QTest::keyClick(menu(), Qt::Key_G); // is grey
    menu()->close();
    serve();
    EXPECT_EQ(chosen, QStringList());
    EXPECT_TRUE(widget->findChildren<QMenu*>().isEmpty()) << "closed menus are gone";
}

TEST_F(PopupMenuTest, TheWidgetMayGoWhileTheMenuIsOpen) {
    popUp();
    widget.reset();
    EXPECT_EQ(menu(), nullptr);
    serve();
    EXPECT_EQ(chosen, QStringList());
}

TEST_F(PopupMenuTest, TheWidgetMayGoBehindTheChoice) {
    popUp();
    QTest::keyClick(menu(), Qt::Key_E);
    widget.reset();
    serve();
    EXPECT_EQ(chosen, QStringList());
}

TEST_F(PopupMenuTest, TheChoiceMayEndTheWidget) {
    whenChosen = [this] { widget.reset(); };
    popUp();
    QTest::keyClick(menu(), Qt::Key_E);
    serve();
    EXPECT_EQ(chosen, QStringList{u"first"_s});
    EXPECT_EQ(widget, nullptr);
}

TEST_F(PopupMenuTest, SeparatorsOnlyShowBetweenRows) {
    const PopupMenu untidy{u"KTest"_s,
                           {},
                           {{.name = u"b0"_s, .caption = {}},
                            {.name = u"one"_s, .caption = u"Eins"_s},
                            {.name = u"b1"_s, .caption = {}},
                            {.name = u"b2"_s, .caption = {}},
                            {.name = u"two"_s, .caption = u"Zwei"_s},
                            {.name = u"b3"_s, .caption = {}}}};
    popupRunner().popUp(*widget, untidy, {}, [](const QString&) {});
    QStringList seen;
    for (QAction* each : menu()->actions())
        if (!menu()->actionGeometry(each).isEmpty()) seen << each->objectName();
    EXPECT_EQ(seen.size(), 3) << seen.join(u' ').toStdString();
    EXPECT_TRUE(seen.first() == u"one"_s && seen.last() == u"two"_s);
}

TEST_F(PopupMenuTest, TheRunnerCanBeReplaced) {
    class Silent final : public PopupRunner {
    public:
        void popUp(QWidget&, const PopupMenu& menu, const QPoint&, const PopupChoice&) override { name = menu.name; }
        QString name;
    } silent;
    PopupRunner* const former = setPopupRunner(&silent);
    popUp();
    EXPECT_EQ(silent.name, u"KTest"_s);
    EXPECT_EQ(menu(), nullptr);
    EXPECT_EQ(setPopupRunner(former), &silent);
    setPopupRunner(nullptr);
    popUp();
    EXPECT_NE(menu(), nullptr);
}

TEST_F(PopupMenuTest, APointWithinTheFrame) {
    widget->setFrameStyle(QFrame::Box);
    widget->setLineWidth(4);
    EXPECT_EQ(popupPoint(*widget, 150, 300), widget->mapToGlobal(QPoint(14, 24)));
}

} // namespace mkl
