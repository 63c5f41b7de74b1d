#include "controls/ImageList.h"
#include "controls/ListView.h"
#include "support/Printing.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QTest>
#include <random>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class ListViewTest : public ::testing::Test {
protected:
    ListViewTest() {
        list.resize(300, 200);
        list.ColumnHeaders().Add(u"Pos"_s, 900);
        list.ColumnHeaders().Add(u"Artikelname"_s, 3000);
        QObject::connect(&list, &ListView::ItemClick, [this](ListItem* item) { clicks << item->Key(); });
    }

    Ref<ListItem> add(const QString& key, const QString& text, const QString& name = {}) {
        const Ref<ListItem> item = list.ListItems().Add({}, key, text);
        item->setSubItems(1, name);
        return item;
    }
    void fill() {
        add(u"A1"_s, u"003"_s, u"Zange"_s);
        add(u"A2"_s, u"001"_s, u"öl"_s);
        add(u"A3"_s, u"002"_s, u"Amboss"_s);
    }
    void show() {
        list.show();
        QApplication::processEvents();
    }
    Ref<ListItem> item(const QString& key) const { return list.ListItems().Item(key); }
    QString order() const {
        QStringList keys;
        for (const Ref<ListItem>& each : list.ListItems())
            keys << each->Key();
        return keys.join(u' ');
    }
    QString shown() const {
        QStringList texts;
        for (int row = 0; row < list.model()->rowCount(); ++row)
            texts << list.model()->index(row, 0).data().toString();
        return texts.join(u' ');
    }
    QString selected() const {
        QStringList keys;
        for (const Ref<ListItem>& each : list.ListItems())
            if (each->Selected()) keys << each->Key();
        return keys.join(u' ');
    }
    QPoint centre(int row) const { return list.visualRect(list.model()->index(row, 0)).center(); }

    ListView list;
    QStringList clicks;
};

} // namespace

TEST_F(ListViewTest, RowsHoldTheirTexts) {
    fill();
    const Ref<ListItem> first = item(u"A1"_s);
    first->setTag(Variant(4711));
    first->setSmallIcon(u"On"_s);
    EXPECT_EQ(list.ListItems().Count(), 3);
    EXPECT_EQ(list.ListItems().Item(1), first);
    EXPECT_EQ(first->Text(), u"003"_s);
    EXPECT_EQ(first->SubItems(1), u"Zange"_s);
    EXPECT_EQ(first->SubItems(2), QString());
    EXPECT_EQ(first->SmallIcon(), u"On"_s);
    EXPECT_EQ(first->Tag(), Variant(4711));
    EXPECT_EQ(errorOf([&] { first->SubItems(0); }), 5);
    EXPECT_EQ(errorOf([&] { first->setSubItems(0, u"x"_s); }), 5);
    show();
    EXPECT_EQ(list.model()->index(0, 1).data().toString(), u"Zange"_s);
}

TEST_F(ListViewTest, CollectionErrors) {
    fill();
    EXPECT_EQ(errorOf([&] { add(u"A1"_s, u"x"_s); }), 35602);
    EXPECT_EQ(errorOf([&] { item(u"A9"_s); }), 35601);
    EXPECT_EQ(errorOf([&] { list.ListItems().Item(4); }), 35601);
    EXPECT_EQ(errorOf([&] { list.ListItems().Add(5, u"A9"_s); }), 35601);
    EXPECT_EQ(errorOf([&] { item(u"A1"_s)->setKey(u"A2"_s); }), 35602);
    EXPECT_EQ(order(), u"A1 A2 A3"_s);
    list.ListItems().Add(1, u"A0"_s, u"000"_s);
    EXPECT_EQ(order(), u"A0 A1 A2 A3"_s);
}

TEST_F(ListViewTest, SortsByTextWithoutCaseHiddenAndShown) {
    fill();
    list.setSorted(true);
    EXPECT_EQ(order(), u"A2 A3 A1"_s);
    EXPECT_EQ(item(u"A1"_s)->Index(), 3);
    add(u"A4"_s, u"0015"_s); // into its place
    EXPECT_EQ(order(), u"A2 A4 A3 A1"_s);
    show();
    EXPECT_EQ(shown(), u"001 0015 002 003"_s);
    list.setSelectedItem(item(u"A1"_s));
    list.setSortKey(1);
    EXPECT_EQ(order(), u"A4 A3 A1 A2"_s);
    EXPECT_EQ(shown(), u"0015 002 003 001"_s);
    EXPECT_EQ(list.currentIndex().row(), 2); // stays on its item
    EXPECT_EQ(selected(), u"A1"_s);
    list.setSortKey(0);
    add(u"A5"_s, u"0025"_s);
    EXPECT_EQ(shown(), u"001 0015 002 0025 003"_s);
    EXPECT_EQ(errorOf([&] { list.setSortKey(-1); }), 5);
}

TEST_F(ListViewTest, SelectedItemByCodeRaisesNoItemClick) {
    fill();
    for (const bool visible : {false, true}) {
        if (visible) show();
        list.setSelectedItem(item(u"A2"_s));
        EXPECT_EQ(list.SelectedItem(), item(u"A2"_s));
        EXPECT_EQ(selected(), u"A2"_s);
        item(u"A3"_s)->setSelected(true);
        EXPECT_EQ(selected(), u"A3"_s); // one at a time
        list.setSelectedItem(nullptr);
        EXPECT_FALSE(list.SelectedItem());
        EXPECT_EQ(selected(), QString());
    }
    EXPECT_TRUE(clicks.isEmpty());
}

TEST_F(ListViewTest, MultiSelectKeepsTheOthers) {
    list.setMultiSelect(true);
    EXPECT_TRUE(list.MultiSelect());
    fill();
    list.setSelectedItem(item(u"A1"_s));
    item(u"A3"_s)->setSelected(true);
    EXPECT_EQ(selected(), u"A1 A3"_s);
    show();
    EXPECT_EQ(list.selectionModel()->selectedRows().size(), 2);
    list.setSelectedItem(item(u"A2"_s));
    EXPECT_EQ(selected(), u"A1 A2 A3"_s);
    item(u"A1"_s)->setSelected(false);
    EXPECT_EQ(selected(), u"A2 A3"_s);
    EXPECT_EQ(list.SelectedItem(), item(u"A2"_s));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, centre(0));
    EXPECT_EQ(selected(), u"A1 A2 A3"_s);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, centre(2));
    EXPECT_EQ(selected(), u"A3"_s);
    EXPECT_EQ(clicks, (QStringList{u"A1"_s, u"A3"_s}));
}

TEST_F(ListViewTest, ItemClickByKey) {
    fill();
    show();
    list.setSelectedItem(item(u"A1"_s));
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(clicks, QStringList{u"A2"_s});
    EXPECT_EQ(list.SelectedItem(), item(u"A2"_s));
}

TEST_F(ListViewTest, RemovedRowsLiveOn) {
    fill();
    show();
    const Ref<ListItem> removed = item(u"A2"_s);
    list.setSelectedItem(removed);
    list.setDropHighlight(removed);
    list.ListItems().Remove(u"A2"_s);
    EXPECT_EQ(shown(), u"003 002"_s);
    EXPECT_EQ(removed->Text(), u"001"_s);
    EXPECT_EQ(removed->SubItems(1), u"öl"_s);
    EXPECT_EQ(removed->Index(), 0);
    EXPECT_FALSE(removed->Selected());
    EXPECT_FALSE(list.DropHighlight());
    EXPECT_EQ(list.SelectedItem(), item(u"A3"_s)); // the next one, with the focus alone
    EXPECT_EQ(selected(), QString());
    removed->setSelected(true);
    removed->EnsureVisible();
    EXPECT_FALSE(removed->Selected());
    EXPECT_EQ(errorOf([&] { list.setSelectedItem(removed); }), 35601);
    list.ListItems().Clear();
    EXPECT_FALSE(list.SelectedItem());
    EXPECT_EQ(shown(), QString());
}

TEST_F(ListViewTest, ColumnsInTwips) {
    const Ref<ColumnHeader> first = list.ColumnHeaders().Item(1);
    EXPECT_EQ(list.ColumnHeaders().Count(), 2);
    EXPECT_EQ(first->Index(), 1);
    EXPECT_EQ(first->Text(), u"Pos"_s);
    EXPECT_EQ(first->Width(), 900);
    first->setWidth(901.5F);
    EXPECT_EQ(first->Width(), 901.5F);
    EXPECT_EQ(list.header()->sectionSize(0), 60);
    show();
    list.header()->resizeSection(0, 100); // as the user does
    EXPECT_EQ(first->Width(), 1500);
    first->setWidth(-1);
    EXPECT_EQ(first->Width(), 0);
    first->setText(u"Position"_s);
    EXPECT_EQ(list.model()->headerData(0, Qt::Horizontal).toString(), u"Position"_s);
    EXPECT_EQ(errorOf([&] { list.ColumnHeaders().Item(3); }), 35601);
}

TEST_F(ListViewTest, ColumnClick) {
    Long clicked = 0;
    QObject::connect(&list, &ListView::ColumnClick, [&](ColumnHeader* column) { clicked = column->Index(); });
    show();
    const QPoint at(list.header()->sectionViewportPosition(1) + 20, list.header()->height() / 2);
    QTest::mouseClick(list.header()->viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(clicked, 2);
}

TEST_F(ListViewTest, HitTestInTwips) {
    fill();
    show();
    const auto hitAt = [this](int x, int y) {
        return list.HitTest(static_cast<Single>(x * 15), static_cast<Single>(y * 15));
    };
    const int heads = list.header()->height();
    EXPECT_EQ(hitAt(centre(1).x(), centre(1).y() + heads), item(u"A2"_s));
    EXPECT_FALSE(hitAt(centre(0).x(), heads / 2)) << "heads of columns are no rows";
    EXPECT_FALSE(list.HitTest(100, 2900));
}

TEST_F(ListViewTest, EnsureVisibleAlsoWhenShownLater) {
    for (int i = 0; i < 200; ++i)
        add(QString::number(i), QString::number(i));
    list.ListItems().Item(150)->EnsureVisible();
    show();
    EXPECT_TRUE(list.viewport()->rect().contains(centre(149)));
}

TEST_F(ListViewTest, PicturesComeFromTheImageList) {
    ImageList images;
    QPixmap red(16, 16);
    red.fill(Qt::red);
    images.ListImages().Add(u"On"_s, QIcon(red));
    list.setSmallIcons(&images);
    add(u"A1"_s, u"001"_s)->setSmallIcon(u"On"_s);
    show();
    EXPECT_FALSE(list.model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_FALSE(list.model()->index(0, 1).data(Qt::DecorationRole).isValid());
}

TEST_F(ListViewTest, ModelStaysConsistentUnderRandomEdits) {
    list.setMultiSelect(true);
    const QAbstractItemModelTester tester(list.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::mt19937 random(7);
    const auto below = [&](Long limit) { return static_cast<Long>(random() % static_cast<unsigned>(limit)); };
    for (int step = 0; step < 600; ++step) {
        const Long count = list.ListItems().Count();
        const Long what = below(20);
        if (count == 0 || what < 9)
            add({}, QString::number(below(1000)));
        else if (what < 12)
            list.ListItems().Remove(1 + below(count));
        else if (what < 15)
            list.ListItems().Item(1 + below(count))->setSelected(below(2) == 0);
        else if (what < 16)
            list.setSelectedItem(list.ListItems().Item(1 + below(count)));
        else if (what < 17)
            list.setSorted(below(2) == 0);
        else if (what < 18)
            list.setVisible(below(3) > 0);
        if (!list.isVisible()) continue;
        ASSERT_EQ(list.model()->rowCount(), list.ListItems().Count());
        for (const Ref<ListItem>& each : list.ListItems())
            ASSERT_EQ(list.selectionModel()->isRowSelected(each->Index() - 1), each->Selected()) << step;
    }
}

TEST_F(ListViewTest, HeldObjectsOutliveTheList) {
    auto other = std::make_unique<ListView>();
    const Ref<ColumnHeader> column = other->ColumnHeaders().Add(u"Pos"_s, 900);
    const Ref<ListItem> row = other->ListItems().Add({}, u"A1"_s, u"001"_s);
    other.reset();
    EXPECT_EQ(column->Width(), 900);
    column->setText(u"x"_s);
    EXPECT_EQ(row->Index(), 0);
    EXPECT_EQ(row->Text(), u"001"_s);
}

TEST_F(ListViewTest, TextsComeBackWhatTheyAreMadeOf) {
    const Ref<ListItem> row = add(u"A1"_s, {});
    for (const QString& text : {u"Größe M"_s, u"1 € 中 😀"_s, QString(127, u'ß'), QString(128, u'ß'), QString(129, u'ß'),
                                QString(5000, u'x'), u"a\0b"_s, QString()}) {
        row->setText(text);
        row->setKey(u"A"_s + text);
        for (const Long column : {1, 2, 5}) {
            row->setSubItems(column, text);
            EXPECT_EQ(row->SubItems(column), text);
        }
        EXPECT_EQ(row->Text(), text);
        EXPECT_EQ(row->Key(), u"A"_s + text);
    }
    EXPECT_EQ(row->SubItems(4), QString());
    EXPECT_EQ(row->SubItems(6), QString());
}

TEST_F(ListViewTest, NumbersInTheirOrderAndOthersSort) {
    list.setSorted(true);
    for (const QString& number : {u"001"_s, u"002"_s, u"002"_s, u"1000"_s, u"999"_s})
        add({}, number);
    const auto texts = [this] {
        QStringList all;
        for (const Ref<ListItem>& each : list.ListItems())
            all << each->Text();
        return all.join(u' ');
    };
    EXPECT_EQ(texts(), u"001 002 002 1000 999"_s);
    add({}, u"0015"_s);
    EXPECT_EQ(texts(), u"001 0015 002 002 1000 999"_s);
    add({}, u"b"_s);
    add({}, u"A"_s);
    EXPECT_EQ(texts(), u"001 0015 002 002 1000 999 A b"_s);
}

} // namespace mkl
