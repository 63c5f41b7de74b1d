#include "controls/ImageList.h"
#include "controls/ToolTip.h"
#include "controls/TreeFixture.h"

#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

namespace mkl {

using TreeViewTest = TreeFixture;

TEST_F(TreeViewTest, SelectingByCodeRaisesNoNodeClick) {
    fill();
    show();
    tree.setSelectedItem(node(u"b"_s));
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"b"_s);
    EXPECT_TRUE(node(u"b"_s)->Selected());
    EXPECT_TRUE(tree.selectionModel()->isSelected(indexOf(u"b"_s)));
    node(u"a"_s)->setSelected(true);
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"a"_s);
    EXPECT_FALSE(node(u"b"_s)->Selected());
    tree.setSelectedItem(nullptr);
    EXPECT_FALSE(tree.SelectedItem());
    EXPECT_FALSE(tree.selectionModel()->hasSelection());
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(TreeViewTest, ForeignAndRemovedNodesCannotBeSelected) {
    fill();
    const Ref<Node> removed = node(u"b"_s);
    tree.Nodes().Remove(u"b"_s);
    TreeView other;
    const Ref<Node> foreign = other.Nodes().Add();
    EXPECT_EQ(errorOf([&] { tree.setSelectedItem(removed); }), 35601);
    EXPECT_EQ(errorOf([&] { tree.setSelectedItem(foreign); }), 35601);
    EXPECT_EQ(errorOf([&] { tree.setDropHighlight(foreign); }), 35601);
}

TEST_F(TreeViewTest, SelectingExpandsWhatHidesTheNode) {
    fill();
    show();
    tree.setSelectedItem(node(u"a11"_s));
    EXPECT_EQ(log, (QStringList{u"Expand a"_s, u"Expand a1"_s}));
    EXPECT_TRUE(tree.viewport()->rect().contains(centre(u"a11"_s)));
}

TEST_F(TreeViewTest, NodeClickByMouse) {
    fill();
    show();
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, centre(u"b"_s));
    EXPECT_EQ(log, QStringList{u"NodeClick b"_s});
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"b"_s);
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, centre(u"b"_s));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, centre(u"b"_s)); // again on the selected one
    EXPECT_EQ(log, (QStringList{u"NodeClick b"_s, u"NodeClick b"_s}));
}

TEST_F(TreeViewTest, AClickBesideTheRowsKeepsTheSelection) {
    fill();
    show();
    tree.setSelectedItem(node(u"b"_s));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(100, 390));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::ControlModifier, centre(u"b"_s));
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"b"_s);
    EXPECT_EQ(log, QStringList{u"NodeClick b"_s});
}

TEST_F(TreeViewTest, NodeClickByKeys) {
    fill();
    show();
    tree.setSelectedItem(node(u"a"_s));
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(log, QStringList{u"NodeClick b"_s});
    QTest::keyClick(&tree, Qt::Key_Down); // the last one: nothing moves
    EXPECT_EQ(log.size(), 1);
    QTest::keyClick(&tree, Qt::Key_Home);
    EXPECT_EQ(log.takeLast(), u"NodeClick a"_s);
    QTest::keyClick(&tree, Qt::Key_Right);
    EXPECT_EQ(log.takeLast(), u"Expand a"_s);
    QTest::keyClick(&tree, Qt::Key_Left);
    EXPECT_EQ(log.takeLast(), u"Collapse a"_s);
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"a"_s);
}

TEST_F(TreeViewTest, ExpandAndCollapseByCodeRaiseTheirEventsOnce) {
    fill();
    show();
    node(u"a"_s)->setExpanded(true);
    EXPECT_TRUE(tree.isExpanded(indexOf(u"a"_s)));
    node(u"a"_s)->setExpanded(true);
    EXPECT_EQ(log, QStringList{u"Expand a"_s});
    node(u"a"_s)->setExpanded(false);
    EXPECT_FALSE(tree.isExpanded(indexOf(u"a"_s)));
    node(u"b"_s)->setExpanded(true); // has no children
    EXPECT_FALSE(node(u"b"_s)->Expanded());
    EXPECT_EQ(log, (QStringList{u"Expand a"_s, u"Collapse a"_s}));
}

TEST_F(TreeViewTest, ExpandByMouseIsNoNodeClick) {
    fill();
    show();
    const QRect row = tree.visualRect(indexOf(u"a"_s));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(row.left() / 2, row.center().y()));
    EXPECT_EQ(log, QStringList{u"Expand a"_s});
    EXPECT_TRUE(node(u"a"_s)->Expanded());
    EXPECT_FALSE(tree.SelectedItem());
}

TEST_F(TreeViewTest, ACollapseThatHidesTheSelectedNodeMovesTheSelectionFirst) {
    fill();
    show();
    tree.setSelectedItem(node(u"a11"_s));
    log.clear();
    QString selectedAtEvent;
    QObject::connect(&tree, &TreeView::Collapse, [&] { selectedAtEvent = keyOf(tree.SelectedItem()); });
    tree.collapse(indexOf(u"a"_s)); // as the user does
    EXPECT_EQ(selectedAtEvent, u"a"_s);
    EXPECT_EQ(log, QStringList{u"Collapse a"_s});

    tree.setSelectedItem(node(u"a11"_s));
    node(u"a1"_s)->setExpanded(false); // by code
    EXPECT_EQ(selectedAtEvent, u"a1"_s);
    EXPECT_TRUE(tree.selectionModel()->isSelected(indexOf(u"a1"_s)));
    tree.setSelectedItem(node(u"b"_s));
    node(u"a"_s)->setExpanded(false);
    EXPECT_EQ(selectedAtEvent, u"b"_s);
}

TEST_F(TreeViewTest, TheSameEventsWhileHidden) {
    fill();
    tree.setSelectedItem(node(u"a11"_s));
    node(u"a"_s)->setExpanded(false);
    EXPECT_EQ(log, (QStringList{u"Expand a"_s, u"Expand a1"_s, u"Collapse a"_s}));
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"a"_s);
    show();
    EXPECT_EQ(log.size(), 3); // showing raises nothing
    EXPECT_FALSE(tree.isExpanded(indexOf(u"a"_s)));
    EXPECT_TRUE(tree.isExpanded(indexOf(u"a1"_s)));
    EXPECT_TRUE(tree.selectionModel()->isSelected(indexOf(u"a"_s)));
}

TEST_F(TreeViewTest, AHiddenTreeSignalsNothingWhileItIsFilled) {
    show();
    tree.hide();
    QSignalSpy inserts(tree.model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy resets(tree.model(), &QAbstractItemModel::modelReset);
    fill();
    tree.Nodes().Remove(u"a11"_s);
    EXPECT_EQ(inserts.count(), 0);
    EXPECT_EQ(resets.count(), 1); // fell asleep
    tree.show();
    EXPECT_EQ(resets.count(), 2);
    EXPECT_EQ(tree.model()->rowCount(), 2);
}

TEST_F(TreeViewTest, AHiddenTreeKeepsItsStateWhenNothingChanges) {
    fill();
    show();
    node(u"a"_s)->setExpanded(true);
    tree.setSelectedItem(node(u"a2"_s));
    QSignalSpy resets(tree.model(), &QAbstractItemModel::modelReset);
    tree.hide();
    node(u"a"_s)->setText(u"neu"_s);
    tree.show();
    EXPECT_EQ(resets.count(), 0);
    EXPECT_TRUE(tree.selectionModel()->isSelected(indexOf(u"a2"_s)));
}

TEST_F(TreeViewTest, EnsureVisibleScrollsAlsoWhenShownLater) {
    for (int i = 0; i < 200; ++i)
        add({}, QString::number(i));
    node(u"150"_s)->EnsureVisible();
    show();
    EXPECT_TRUE(tree.viewport()->rect().contains(tree.visualRect(indexOf(u"150"_s))));
    node(u"3"_s)->EnsureVisible();
    EXPECT_TRUE(tree.viewport()->rect().contains(tree.visualRect(indexOf(u"3"_s))));
}

TEST_F(TreeViewTest, RemovingTheSelectedNodePassesTheSelectionOn) {
    fill();
    show();
    tree.setSelectedItem(node(u"a11"_s));
    tree.Nodes().Remove(u"a1"_s);
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"a2"_s); // the next one
    tree.Nodes().Remove(u"a2"_s);
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"a"_s); // the parent
    tree.setSelectedItem(node(u"b"_s));
    tree.Nodes().Remove(u"b"_s);
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"a"_s); // the previous one
    EXPECT_TRUE(tree.selectionModel()->isSelected(indexOf(u"a"_s)));
    tree.Nodes().Remove(u"a"_s);
    EXPECT_FALSE(tree.SelectedItem());
    EXPECT_FALSE(log.join(u' ').contains(u"NodeClick"));
}

TEST_F(TreeViewTest, ClearEmptiesSelectionAndHighlight) {
    fill();
    show();
    tree.setSelectedItem(node(u"b"_s));
    tree.setDropHighlight(node(u"a"_s));
    tree.Nodes().Clear();
    EXPECT_FALSE(tree.SelectedItem());
    EXPECT_FALSE(tree.DropHighlight());
    EXPECT_EQ(tree.model()->rowCount(), 0);
    fill();
    EXPECT_EQ(tree.model()->rowCount(), 2);
}

TEST_F(TreeViewTest, HitTestFollowsTheScrolling) {
    for (int i = 0; i < 200; ++i)
        add({}, QString::number(i));
    show();
    const QRect row = tree.visualRect(indexOf(u"1"_s));
    const auto x = static_cast<Single>(row.center().x() * 15);
    const auto y = static_cast<Single>(row.center().y() * 15);
    EXPECT_EQ(keyOf(tree.HitTest(x, y)), u"1"_s);
    node(u"199"_s)->EnsureVisible();
    const Ref<Node> hit = tree.HitTest(x, y);
    ASSERT_TRUE(hit);
    EXPECT_EQ(tree.visualRect(indexOf(hit->Key())).center().y() * 15, y);
    EXPECT_GT(hit->Index(), 100);
    tree.Nodes().Clear();
    EXPECT_FALSE(tree.HitTest(x, y));
    EXPECT_FALSE(tree.HitTest(-100, -100));
}

TEST_F(TreeViewTest, MouseEventsInTwipsByReference) {
    fill();
    show();
    QStringList events;
    const auto note = [&](const char* name) {
        return [&events, name](Integer& button, Integer& shift, Single& x, Single& y) {
            events << u"%1 %2 %3 %4 %5"_s.arg(QString::fromLatin1(name)).arg(button).arg(shift).arg(x).arg(y);
            x += 1000;
        };
    };
    QObject::connect(&tree, &TreeView::MouseDown, note("down"));
    QObject::connect(&tree, &TreeView::MouseDown, [&](Integer&, Integer&, Single& x, Single&) {
        events << QString::number(x); // sees what the first handler made of it
    });
    QObject::connect(&tree, &TreeView::MouseMove, note("move"));
    QObject::connect(&tree, &TreeView::MouseUp, note("up"));
    QObject::connect(&tree, &TreeView::Click, [&] { events << u"click"_s; });
    QObject::connect(&tree, &TreeView::DblClick, [&] { events << u"dblclick"_s; });
    const QPoint at(50, 390);
    QTest::mousePress(tree.viewport(), Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier, at);
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, Qt::AltModifier, at);
    QTest::mouseClick(tree.viewport(), Qt::RightButton, {}, at);
    EXPECT_EQ(events, (QStringList{u"down 1 3 750 5850"_s, u"1750"_s, u"up 1 4 750 5850"_s, u"click"_s,
                                   u"down 2 0 750 5850"_s, u"1750"_s, u"up 2 0 750 5850"_s}));
    events.clear();
    QTest::mouseMove(tree.viewport(), QPoint(60, 60));
    EXPECT_EQ(events.value(0), u"move 0 0 900 900"_s);
    events.clear();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, centre(u"b"_s));
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, centre(u"b"_s));
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, centre(u"b"_s));
    EXPECT_EQ(events.filter(u"click"_s), (QStringList{u"click"_s, u"dblclick"_s}));
}

TEST_F(TreeViewTest, MovingWithTheButtonDownSelectsNothing) {
    fill();
    show();
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, centre(u"a"_s));
    QMouseEvent move(QEvent::MouseMove, centre(u"b"_s), tree.viewport()->mapToGlobal(centre(u"b"_s)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(tree.viewport(), &move);
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, centre(u"b"_s));
    EXPECT_EQ(keyOf(tree.SelectedItem()), u"a"_s);
}

TEST_F(TreeViewTest, GotFocus) {
    fill();
    QSignalSpy focus(&tree, &TreeView::GotFocus);
    show();
    tree.activateWindow();
    tree.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&tree));
    EXPECT_EQ(focus.count(), 1);
    EXPECT_FALSE(tree.SelectedItem()); // the focus selects nothing
}

TEST_F(TreeViewTest, TheTreeMayBeDestroyedByItsHandlers) {
    for (const bool byMouse : {true, false}) {
        auto* const doomed = new TreeView;
        doomed->Nodes().Add({}, tvwLast, u"a"_s, u"a"_s);
        doomed->Nodes().Add({}, tvwLast, u"b"_s, u"b"_s);
        doomed->show();
        const QPoint at = doomed->visualRect(doomed->model()->index(1, 0)).center();
        if (byMouse) {
            QObject::connect(doomed, &TreeView::MouseDown, [&] { delete doomed; });
            QTest::mousePress(doomed->viewport(), Qt::LeftButton, {}, at);
        } else {
            QObject::connect(doomed, &TreeView::NodeClick, [&] { delete doomed; });
            doomed->setSelectedItem(doomed->Nodes().Item(1));
            QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, {});
            QApplication::sendEvent(doomed, &down);
        }
    }
}

TEST_F(TreeViewTest, HandlersMayRemoveTheNode) {
    fill();
    show();
    QObject::connect(&tree, &TreeView::Expand, [&](Node* expanded) { tree.Nodes().Remove(expanded->Key()); });
    node(u"a1"_s)->setExpanded(true);
    node(u"a"_s)->setExpanded(true);
    EXPECT_EQ(order(), QStringList{u"b"_s});
}

TEST_F(TreeViewTest, PicturesComeFromTheImageList) {
    ImageList images;
    QPixmap red(16, 16);
    red.fill(Qt::red);
    images.ListImages().Add(u"OrdnerZuOn"_s, QIcon(red));
    fill();
    show();
    node(u"a"_s)->setImage(u"OrdnerZuOn"_s);
    const auto picture = [&](const QString& key) {
        return indexOf(key).data(Qt::DecorationRole).value<QIcon>().isNull();
    };
    EXPECT_TRUE(picture(u"a"_s));
    tree.setImageList(&images);
    EXPECT_FALSE(picture(u"a"_s));
    node(u"a"_s)->setImage(u"fehlt"_s);
    EXPECT_TRUE(picture(u"a"_s));
    EXPECT_EQ(node(u"a"_s)->Image(), u"fehlt"_s);
}

TEST_F(TreeViewTest, DropHighlightIsDrawn) {
    fill();
    show();
    const auto colour = [&] {
        return tree.grab(QRect(centre(u"b"_s) + QPoint(60, 0), QSize(1, 1))).toImage().pixel(0, 0);
    };
    const QRgb plain = colour();
    tree.setDropHighlight(node(u"b"_s));
    EXPECT_EQ(colour(), tree.palette().highlight().color().rgb());
    tree.setDropHighlight(nullptr);
    EXPECT_EQ(colour(), plain);
    tree.setDropHighlight(node(u"b"_s));
    tree.Nodes().Remove(u"b"_s);
    EXPECT_FALSE(tree.DropHighlight());
}

TEST_F(TreeViewTest, AnUnshownTreeCanBePainted) {
    fill();
    const QImage picture = tree.grab().toImage();
    EXPECT_EQ(tree.model()->rowCount(), 2);
    QSet<QRgb> colours;
    for (int x = 0; x < picture.width(); ++x)
        colours.insert(picture.pixel(x, tree.visualRect(indexOf(u"b"_s)).center().y() + tree.viewport()->y()));
    EXPECT_GT(colours.size(), 2);
    tree.Nodes().Clear();
    EXPECT_EQ(tree.model()->rowCount(), 0);
}

TEST_F(TreeViewTest, ToolTipShowsATextThatIsCutShort) {
    fill();
    node(u"b"_s)->setText(u"001 - <b>Sechskantschrauben</b> mit Schaft, galvanisch verzinkt, Festigkeitsklasse 8.8"_s);
    show();
    const auto tip = [&](const QString& key) {
        QHelpEvent help(QEvent::ToolTip, centre(key), tree.viewport()->mapToGlobal(centre(key)));
        QApplication::sendEvent(tree.viewport(), &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    EXPECT_EQ(tip(u"b"_s), plainToolTip(node(u"b"_s)->Text()));
    QToolTip::hideText();
}

TEST_F(TreeViewTest, MouseIconIsThePointerOverTheControl) {
    QPixmap picture(16, 16);
    picture.fill(Qt::green);
    tree.setMouseIcon(picture);
    EXPECT_EQ(tree.viewport()->cursor().shape(), Qt::BitmapCursor);
    tree.setMouseIcon({});
    EXPECT_EQ(tree.viewport()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_TRUE(tree.MouseIcon().isNull());
}

} // namespace mkl
