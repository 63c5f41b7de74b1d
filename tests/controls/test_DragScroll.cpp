// The wheel and the edges scroll during a drag.
#include "controls/DragFixture.h"
#include "controls/IntervalTimer.h"

#include <QScrollBar>

namespace mkl {

namespace {

class DragScroll : public DragFixture {
protected:
    DragScroll() {
        for (int number = 0; number < 400; ++number)
            tree->Nodes().Add({}, tvwChild, u"n%1"_s.arg(number), u"n%1"_s.arg(number));
        for (ItemView* view : {static_cast<ItemView*>(tree), static_cast<ItemView*>(list)})
            view->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
        QApplication::processEvents();
    }
    static IntervalTimer& timer() { return *qApp->findChild<IntervalTimer*>(u"DragScrollTimer"_s); }
    int top() const { return tree->verticalScrollBar()->value(); }
    QPoint lowerEdge() const { return {50, tree->viewport()->height() - 10}; }
    void tick(int times) {
        for (int each = 0; each < times; ++each)
            timer().tick();
        QApplication::processEvents();
    }
};

} // namespace

TEST_F(DragScroll, TheWheelScrollsWhatIsUnderThePointer) {
    dragFromList(2);
    moveTo(u"b"_s);
    take();
    const QPoint point = placeOf(u"b"_s);
    const QPoint place = tree->viewport()->mapToGlobal(point);
    QWheelEvent wheel(point, place, {}, {0, -120}, Qt::LeftButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(tree->viewport(), &wheel);
    QApplication::processEvents();
    EXPECT_GT(top(), 0);
    const QStringList told = take();
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.first().startsWith(u"tree over n"_s)) << told.first().toStdString();
    EXPECT_TRUE(drags());
    EXPECT_EQ(control->ActiveControl(), list);
}

TEST_F(DragScroll, TheLowerEdgeScrollsDown) {
    dragFromList(2);
    moveTo(u"b"_s);
    EXPECT_FALSE(timer().Enabled());
    WindowMouse::moveTo(*tree, lowerEdge());
    EXPECT_TRUE(timer().Enabled());
    const Ref<Node> before = tree->HitTest(50 * 15, static_cast<Single>(lowerEdge().y()) * 15);
    take();
    tick(1);
    EXPECT_EQ(top(), 1);
    EXPECT_EQ(take(), QStringList{u"tree over %1 from list"_s.arg(before->Next()->Key())});
    tick(11);
    EXPECT_EQ(top(), 12);
    tick(2); // it gathers speed
    EXPECT_EQ(top(), 16);
    WindowMouse::moveTo(*tree, {50, 100});
    EXPECT_FALSE(timer().Enabled());
    WindowMouse::moveTo(*tree, lowerEdge()); // and begins slowly
    tick(1);
    EXPECT_EQ(top(), 17);
}

TEST_F(DragScroll, TheUpperEdgeScrollsUp) {
    tree->verticalScrollBar()->setValue(20);
    dragFromList(2);
    WindowMouse::moveTo(*tree, {50, 10});
    tick(3);
    EXPECT_EQ(top(), 17);
    WindowMouse::moveTo(*control, nowhere);
    EXPECT_FALSE(timer().Enabled());
    tick(3);
    EXPECT_EQ(top(), 17);
    WindowMouse::moveTo(*tree, {50, 10});
    tick(200);
    EXPECT_EQ(top(), 0);
}

TEST_F(DragScroll, TimePassesByItself) {
    dragFromList(2);
    WindowMouse::moveTo(*tree, lowerEdge());
    EXPECT_TRUE(QTest::qWaitFor([this] { return top() >= 2; }));
}

TEST_F(DragScroll, EndsWithTheDrag) {
    dragFromList(2);
    WindowMouse::moveTo(*tree, lowerEdge());
    WindowMouse::releaseAt(*tree, lowerEdge());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(qApp->findChild<IntervalTimer*>(u"DragScrollTimer"_s), nullptr);
    take();
    tree->verticalScrollBar()->setValue(50);
    QApplication::processEvents();
    EXPECT_EQ(take(), QStringList());
}

TEST_F(DragScroll, AViewThatWasLeftTellsNothing) {
    dragFromList(2);
    moveTo(u"b"_s);
    moveTo(*list, 2);
    take();
    tree->verticalScrollBar()->setValue(50);
    QApplication::processEvents();
    EXPECT_EQ(take(), QStringList());
}

} // namespace mkl
