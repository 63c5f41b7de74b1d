// Several selected rows, by mouse and keyboard, as people know it from lists.
#include "controls/ListView.h"
#include "support/Printing.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTest>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class ListSelectionTest : public ::testing::Test {
protected:
    ListSelectionTest() {
        list.setMultiSelect(true);
        list.resize(300, 400);
        list.ColumnHeaders().Add(u"Pos"_s, 900);
        list.ColumnHeaders().Add(u"Artikelname"_s, 2000);
        QObject::connect(&list, &ListView::ItemClick, [this](ListItem* item) { clicks << item->Key(); });
    }

    void fill(int rows) {
        for (int row = 1; row <= rows; ++row)
            list.ListItems().Add({}, QString::number(row), u"%1"_s.arg(row, 7, 10, QChar(u'0')));
    }
    void show(int rows = 9) {
        fill(rows);
        list.show();
        QApplication::processEvents();
    }
    /// A press with its release; 0 is beside the rows.
    void click(int row, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) {
        press(row, modifiers, button);
        release(row, modifiers, button);
    }
    void press(int row, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(list.viewport(), button, modifiers, place(row));
    }
    void release(int row, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(list.viewport(), button, modifiers, place(row));
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&list, key, modifiers); }
    QPoint place(int row) const {
        return row == 0 ? QPoint(20, list.viewport()->height() - 3)
                        : list.visualRect(list.model()->index(row - 1, 0)).center();
    }

    /// Numbers of the selected rows, as the items and as the view know them.
    QString selected() const {
        QStringList items;
        for (const Ref<ListItem>& each : list.ListItems()) {
            EXPECT_EQ(each->Selected(), list.selectionModel()->isRowSelected(each->Index() - 1)) << each->Index();
            if (each->Selected()) items << each->Key();
        }
        EXPECT_EQ(list.SelectedCount(), items.size());
        return items.join(u' ');
    }
    QString focus() const { return list.SelectedItem() ? list.SelectedItem()->Key() : QString(); }

    static constexpr auto shift = Qt::ShiftModifier;
    static constexpr auto ctrl = Qt::ControlModifier;

    ListView list;
    QStringList clicks;
};

} // namespace

TEST_F(ListSelectionTest, AClickSelectsOneRow) {
    show();
    click(3);
    EXPECT_EQ(selected(), u"3"_s);
    click(5);
    EXPECT_EQ(selected(), u"5"_s);
    EXPECT_EQ(focus(), u"5"_s);
    EXPECT_EQ(clicks, (QStringList{u"3"_s, u"5"_s}));
}

TEST_F(ListSelectionTest, ShiftSelectsFromTheAnchor) {
    show();
    click(3);
    click(6, shift);
    EXPECT_EQ(selected(), u"3 4 5 6"_s);
    click(2, shift); // the range turns round, and does not grow
    EXPECT_EQ(selected(), u"2 3"_s);
    EXPECT_EQ(focus(), u"2"_s);
}

TEST_F(ListSelectionTest, ShiftWithoutAnchorBeginsAtTheFocus) {
    show();
    EXPECT_EQ(focus(), u"1"_s); // where the list got the focus
    click(4, shift);
    EXPECT_EQ(selected(), u"1 2 3 4"_s);
}

TEST_F(ListSelectionTest, CtrlTurnsSingleRowsOnAndOff) {
    show();
    click(3);
    click(5, ctrl);
    click(7, ctrl);
    EXPECT_EQ(selected(), u"3 5 7"_s);
    click(5, ctrl);
    EXPECT_EQ(selected(), u"3 7"_s);
    EXPECT_EQ(focus(), u"5"_s); // it keeps the focus
    click(3, ctrl);
    click(7, ctrl);
    EXPECT_EQ(selected(), QString());
}

TEST_F(ListSelectionTest, ShiftReplacesWhatCtrlSelected) {
    show();
    click(1);
    click(3, ctrl);
    click(5, shift);
    EXPECT_EQ(selected(), u"3 4 5"_s);
}

TEST_F(ListSelectionTest, CtrlShiftAddsTheRange) {
    show();
    click(1);
    click(3, ctrl);
    click(5, ctrl | shift);
    EXPECT_EQ(selected(), u"1 3 4 5"_s);
}

TEST_F(ListSelectionTest, APressOnSelectedRowsKeepsThemUntilTheRelease) {
    show();
    click(2);
    click(4, shift);
    press(3);
    EXPECT_EQ(selected(), u"2 3 4"_s);
    EXPECT_EQ(focus(), u"3"_s);
    release(3);
    EXPECT_EQ(selected(), u"3"_s);
}

TEST_F(ListSelectionTest, ACtrlPressUnselectsAtTheRelease) {
    show();
    click(2);
    click(4, shift);
    press(3, ctrl);
    EXPECT_EQ(selected(), u"2 3 4"_s);
    release(3, ctrl);
    EXPECT_EQ(selected(), u"2 4"_s);
}

TEST_F(ListSelectionTest, AReleaseElsewhereChangesNothing) {
    show();
    click(2);
    click(4, shift);
    press(3);
    release(7);
    EXPECT_EQ(selected(), u"2 3 4"_s);
    press(3, ctrl);
    release(0);
    EXPECT_EQ(selected(), u"2 3 4"_s);
}

TEST_F(ListSelectionTest, APressThatBecameADragChangesNothing) {
    show();
    click(2);
    click(4, shift);
    press(3);
    list.forgetPress();
    release(3);
    EXPECT_EQ(selected(), u"2 3 4"_s);
}

TEST_F(ListSelectionTest, MovesWithAButtonDownSelectNothing) {
    show();
    press(2);
    QMouseEvent move(QEvent::MouseMove, place(6), list.viewport()->mapToGlobal(place(6)), Qt::NoButton, Qt::LeftButton,
                     {});
    QApplication::sendEvent(list.viewport(), &move);
    release(6);
    EXPECT_EQ(selected(), u"2"_s);
}

TEST_F(ListSelectionTest, ARowThatGoesUnderThePress) {
    show();
    click(2);
    click(4, shift);
    press(3);
    list.ListItems().Remove(u"3"_s);
    release(3);
    EXPECT_EQ(selected(), u"2 4"_s);
    press(3);
    list.ListItems().Clear();
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_EQ(selected(), QString());
    EXPECT_EQ(list.SelectedCount(), 0);
}

TEST_F(ListSelectionTest, TheRightButtonKeepsWhatItIsOn) {
    show();
    click(2);
    click(4, shift);
    click(3, {}, Qt::RightButton);
    EXPECT_EQ(selected(), u"2 3 4"_s);
    EXPECT_EQ(focus(), u"3"_s);
    click(6, {}, Qt::RightButton);
    EXPECT_EQ(selected(), u"6"_s);
    click(8, ctrl, Qt::RightButton);
    EXPECT_EQ(selected(), u"6 8"_s);
}

TEST_F(ListSelectionTest, AClickBesideTheRowsClears) {
    show();
    click(2);
    click(4, shift);
    click(0, ctrl);
    click(0, shift);
    EXPECT_EQ(selected(), u"2 3 4"_s);
    click(0);
    EXPECT_EQ(selected(), QString());
    EXPECT_EQ(focus(), u"4"_s);
}

TEST_F(ListSelectionTest, ArrowsMoveTheSelection) {
    show();
    click(3);
    clicks.clear();
    key(Qt::Key_Down);
    EXPECT_EQ(selected(), u"4"_s);
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_EQ(selected(), u"2"_s);
    EXPECT_EQ(clicks, (QStringList{u"4"_s, u"3"_s, u"2"_s}));
}

TEST_F(ListSelectionTest, ShiftArrowsMoveTheEndOfTheRange) {
    show();
    click(4);
    key(Qt::Key_Down, shift);
    key(Qt::Key_Down, shift);
    EXPECT_EQ(selected(), u"4 5 6"_s);
    key(Qt::Key_Up, shift);
    key(Qt::Key_Up, shift);
    key(Qt::Key_Up, shift);
    EXPECT_EQ(selected(), u"3 4"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(selected(), u"4"_s);
}

TEST_F(ListSelectionTest, CtrlArrowsMoveTheFocusAlone) {
    show();
    click(2);
    key(Qt::Key_Down, ctrl);
    key(Qt::Key_Down, ctrl);
    EXPECT_EQ(selected(), u"2"_s);
    EXPECT_EQ(focus(), u"4"_s);
    key(Qt::Key_Space); // adds
    EXPECT_EQ(selected(), u"2 4"_s);
    key(Qt::Key_Space, ctrl);
    EXPECT_EQ(selected(), u"2"_s);
    key(Qt::Key_Space, ctrl);
    EXPECT_EQ(selected(), u"2 4"_s);
    key(Qt::Key_Down, ctrl);
    key(Qt::Key_Down, ctrl);
    key(Qt::Key_Space, shift);
    EXPECT_EQ(selected(), u"4 5 6"_s);
    EXPECT_EQ(clicks, (QStringList{u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s}));
}

TEST_F(ListSelectionTest, CtrlShiftArrowsAddToTheSelection) {
    show();
    click(1);
    click(4, ctrl);
    key(Qt::Key_Down, ctrl | shift);
    EXPECT_EQ(selected(), u"1 4 5"_s);
}

TEST_F(ListSelectionTest, HomeAndEnd) {
    show();
    click(5);
    key(Qt::Key_End);
    EXPECT_EQ(selected(), u"9"_s);
    key(Qt::Key_Home);
    EXPECT_EQ(selected(), u"1"_s);
    click(7);
    key(Qt::Key_Home, shift);
    EXPECT_EQ(selected(), u"1 2 3 4 5 6 7"_s);
    key(Qt::Key_End, shift);
    EXPECT_EQ(selected(), u"7 8 9"_s);
    key(Qt::Key_Home, ctrl);
    EXPECT_EQ(selected(), u"7 8 9"_s);
    EXPECT_EQ(focus(), u"1"_s);
}

TEST_F(ListSelectionTest, Pages) {
    show(200);
    click(1);
    key(Qt::Key_PageDown);
    const Long down = list.SelectedItem()->Index();
    EXPECT_GT(down, 5);
    EXPECT_LT(down, 40);
    EXPECT_EQ(list.SelectedCount(), 1);
    key(Qt::Key_PageUp);
    EXPECT_EQ(selected(), u"1"_s);
    key(Qt::Key_PageDown, shift);
    EXPECT_EQ(list.SelectedCount(), list.SelectedItem()->Index());
}

TEST_F(ListSelectionTest, CtrlASelectsAll) {
    show();
    click(3);
    clicks.clear();
    key(Qt::Key_A, ctrl);
    EXPECT_EQ(list.SelectedCount(), 9);
    EXPECT_EQ(focus(), u"3"_s);
    key(Qt::Key_Down, shift); // the anchor stayed
    EXPECT_EQ(selected(), u"3 4"_s);
    EXPECT_EQ(clicks, QStringList{u"4"_s});
}

TEST_F(ListSelectionTest, AnEmptyListTakesAllKeys) {
    show(0);
    for (const Qt::Key each : {Qt::Key_Down, Qt::Key_End, Qt::Key_PageUp, Qt::Key_Space, Qt::Key_X})
        key(each, shift);
    key(Qt::Key_A, ctrl);
    click(0);
    EXPECT_EQ(list.SelectedCount(), 0);
    EXPECT_TRUE(clicks.isEmpty());
}

TEST_F(ListSelectionTest, ARangeBeginsWhereCodeSelected) {
    show();
    click(7);
    list.setSelectedItem(list.ListItems().Item(2));
    key(Qt::Key_Down, shift);
    EXPECT_EQ(selected(), u"2 3"_s);
}

TEST_F(ListSelectionTest, ASortKeepsTheSelection) {
    show();
    click(2);
    click(3, shift);
    for (const Ref<ListItem>& each : list.ListItems())
        each->setSubItems(1, QString::number(20 - each->Index()));
    list.setSortKey(1);
    list.setSorted(true);
    EXPECT_EQ(selected(), u"3 2"_s);
    EXPECT_EQ(focus(), u"3"_s);
    key(Qt::Key_Down, shift);
    EXPECT_EQ(selected(), u"2"_s); // from the anchor to the row behind 3
}

TEST_F(ListSelectionTest, SelectedRowsOfAHiddenListShowLater) {
    fill(9);
    for (const int row : {2, 3, 4, 8, 9})
        list.ListItems().Item(row)->setSelected(true);
    EXPECT_EQ(list.SelectedCount(), 5);
    list.show();
    QApplication::processEvents();
    EXPECT_EQ(selected(), u"2 3 4 8 9"_s);
    EXPECT_EQ(list.selectionModel()->selection().size(), 2);
    list.ListItems().Remove(u"3"_s);
    EXPECT_EQ(selected(), u"2 4 8 9"_s);
    list.hide();
    list.ListItems().Remove(u"4"_s);
    EXPECT_EQ(list.SelectedCount(), 3);
}

TEST_F(ListSelectionTest, SelectionsWithoutItemClickAreTold) {
    show();
    QStringList told;
    QObject::connect(&list, &ListView::SelectionChanged, [&] { told << selected(); });
    click(2);
    click(4, shift);
    key(Qt::Key_Down, shift);
    click(1);
    click(1); // selected already
    click(7, {}, Qt::RightButton);
    EXPECT_EQ(told, QStringList()); // an ItemClick came with each
    click(9, shift);
    click(8); // at the release
    click(9, ctrl);
    click(9, ctrl);
    key(Qt::Key_Space, ctrl);
    key(Qt::Key_A, ctrl);
    click(0);
    click(0); // nothing was left
    EXPECT_EQ(told, (QStringList{u"8"_s, u"8"_s, u"8 9"_s, u"1 2 3 4 5 6 7 8 9"_s, QString()}));
}

TEST_F(ListSelectionTest, AHandlerMayDeleteTheList) {
    const auto survives = [](const std::function<void(ListView&)>& act) {
        QPointer<ListView> doomed(new ListView);
        doomed->setMultiSelect(true);
        doomed->ColumnHeaders().Add(u"Pos"_s, 900);
        for (const QString& name : {u"1"_s, u"2"_s})
            doomed->ListItems().Add({}, name)->setSelected(true);
        doomed->setSelectedItem(doomed->ListItems().Item(1));
        doomed->resize(200, 200);
        doomed->show();
        QApplication::processEvents();
        QObject::connect(doomed, &ListView::SelectionChanged, qApp, [&] { delete doomed; });
        act(*doomed);
        EXPECT_TRUE(doomed.isNull());
    };
    const auto mouse = [](ListView& one, QEvent::Type type, const QPoint& at) {
        QMouseEvent event(type, at, one.viewport()->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(one.viewport(), &event);
    };
    survives([&](ListView& one) { mouse(one, QEvent::MouseButtonPress, QPoint(20, 190)); });
    survives([&](ListView& one) {
        const QPoint first = one.visualRect(one.model()->index(0, 0)).center();
        mouse(one, QEvent::MouseButtonPress, first);
        mouse(one, QEvent::MouseButtonRelease, first);
    });
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_Space, Qt::ControlModifier), {Qt::Key_A, Qt::ControlModifier}})
        survives([&](ListView& one) {
            QKeyEvent press(QEvent::KeyPress, key, modifiers);
            QApplication::sendEvent(&one, &press);
        });
}

// Each step takes a fraction of a second; the bound is for slow and busy machines.
TEST_F(ListSelectionTest, AMillionRowsDoNotHang) {
    constexpr Long rows = 1'000'000;
    show(rows);
    QElapsedTimer timer;
    timer.start();
    key(Qt::Key_A, ctrl);
    EXPECT_EQ(list.SelectedCount(), rows);
    click(2);
    EXPECT_EQ(list.SelectedCount(), 1);
    key(Qt::Key_End, shift);
    EXPECT_EQ(list.SelectedCount(), rows - 1);
    key(Qt::Key_Up, shift);
    EXPECT_EQ(list.SelectedCount(), rows - 2);
    key(Qt::Key_Home, ctrl);
    key(Qt::Key_Space, ctrl);
    EXPECT_EQ(list.SelectedCount(), rows - 1);
    list.setSorted(true);
    EXPECT_EQ(list.SelectedCount(), rows - 1);
    click(0 + 1);
    EXPECT_EQ(selected(), u"1"_s);
    RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
    EXPECT_LT(timer.elapsed(), 20000);
}

TEST_F(ListSelectionTest, theSelectedRowsInTheirOrder) {
    const auto keys = [this] {
        QStringList result;
        for (const Ref<ListItem>& item : list.SelectedItems())
            result << item->Key();
        return result.join(u' ');
    };
    fill(9); // while it does not show
    EXPECT_EQ(keys(), QString());
    for (const Long row : {7, 2, 3})
        list.ListItems().Item(row)->setSelected(true);
    EXPECT_EQ(keys(), u"2 3 7"_s);
    list.show();
    QApplication::processEvents();
    list.ListItems().Item(9)->setSelected(true);
    list.ListItems().Item(1)->setSelected(true);
    EXPECT_EQ(keys(), u"1 2 3 7 9"_s);
    list.deselect({list.ListItems().Item(2), list.ListItems().Item(9)});
    EXPECT_EQ(keys(), u"1 3 7"_s);
    EXPECT_EQ(list.SelectedCount(), 3);
    list.ListItems().Item(1)->setSubItems(1, u"z"_s);
    list.setSorted(true);
    list.setSortKey(1);
    EXPECT_EQ(keys(), u"3 7 1"_s);
    list.ListItems().Remove(u"7"_s);
    EXPECT_EQ(keys(), u"3 1"_s);
    list.hide();
    EXPECT_EQ(keys(), u"3 1"_s);
}

TEST_F(ListSelectionTest, manyRowsAreDeselectedAtOnce) {
    show(6000);
    QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
    std::vector<Ref<ListItem>> odd;
    for (Long row = 1; row <= 6000; row += 2)
        odd.push_back(list.ListItems().Item(row));
    list.deselect(odd);
    EXPECT_EQ(list.SelectedCount(), 3000);
    EXPECT_EQ(std::ssize(list.SelectedItems()), 3000);
    EXPECT_EQ(list.SelectedItems().front()->Key(), u"2"_s);
    const Ref<ListItem> removed = odd.front();
    list.ListItems().Remove(removed->Key());
    EXPECT_EQ(errorOf([&] { list.deselect({removed}); }), 35601);
}

} // namespace mkl
