// The three panes of a catalogue that an older program made, under a real mouse and keyboard.
#include "catalogue/CatalogueImport.h"
#include "desktop/BrowserWindow.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace mkl;
using namespace mkl::desktop;

namespace {

constexpr double twipsPerPixel = 15;

class PanesTest : public BrowserWindow {
protected:
    QString makeCatalogue() override {
        const QString file = folder_.path(u"Garten.sqlite"_s);
        importCatalogue(QStringLiteral(MKL_SOURCE_DIR "/tests/data/catalogue-small.mdb"), file);
        return file;
    }

    ListView& pool() const { return *browser().ArticlePoolListView(); }
    ListView& list() const { return *browser().ArticleListView(); }

    /// Drags from there by so many pixels to the right, in steps, as a hand does; not beyond the screen.
    static void drag(const QPoint& from, int by) {
        QStringList moves{u"mousemove"_s, QString::number(from.x()), QString::number(from.y()), u"mousedown"_s, u"1"_s};
        for (int step = 1; step <= 10; ++step)
            moves << u"mousemove"_s << QString::number(std::max(0, from.x() + by * step / 10))
                  << QString::number(from.y()) << u"sleep"_s << u"0.02"_s;
        xdotool(moves << u"mouseup"_s << u"1"_s);
    }
    QPoint middleOf(const char* splitter) const {
        const auto* widget = browser().findChild<QWidget*>(QLatin1StringView(splitter));
        return browser().mapToGlobal(QPoint(widget->geometry().center().x(), browser().height() / 2));
    }
    int right() const { return browser().width(); }
};

TEST_F(PanesTest, AClickOnACategoryShowsItsArticles) {
    const Ref<Node> node = rootWithChildren();
    click(branchOf(*node));
    ASSERT_TRUE(waitUntil([&] { return node->Expanded(); }));
    const Ref<Node> child = node->Child();
    click(textOf(*child));
    ASSERT_TRUE(waitUntil([&] { return browser().Selected(acbPaneCategoryTree) == child->Tag().toLong(); }));
    EXPECT_GT(list().ListItems().Count(), 0);
    for (Long row = 1; row <= list().ListItems().Count(); ++row)
        EXPECT_EQ(list().ListItems().Item(row)->Text(), u"%1"_s.arg(row, 3, 10, QChar(u'0')));
    keepPicture(u"panes-category"_s);
}

TEST_F(PanesTest, SeveralRowsByMouse) {
    const auto clickWith = [this](const QString& key, int row) {
        const QPoint at = rowOf(pool(), row);
        xdotool({u"keydown"_s, key, u"mousemove"_s, QString::number(at.x()), QString::number(at.y()), u"click"_s,
                 u"1"_s, u"keyup"_s, key});
    };
    click(rowOf(pool(), 2));
    ASSERT_TRUE(waitUntil([&] { return pool().SelectedItem() == pool().ListItems().Item(2); }));
    clickWith(u"shift"_s, 6);
    EXPECT_TRUE(waitUntil([&] { return pool().SelectedCount() == 5; }));
    clickWith(u"ctrl"_s, 9);
    EXPECT_TRUE(waitUntil([&] { return pool().SelectedCount() == 6; }));
    clickWith(u"ctrl"_s, 4);
    EXPECT_TRUE(waitUntil([&] { return pool().SelectedCount() == 5; }));
    EXPECT_FALSE(pool().ListItems().Item(4)->Selected());
    keepPicture(u"panes-multiselect"_s);

    const QPoint third = rowOf(pool(), 3);
    xdotool({u"mousemove"_s, QString::number(third.x()), QString::number(third.y()), u"mousedown"_s, u"1"_s});
    ASSERT_TRUE(waitUntil([&] { return pool().SelectedItem() == pool().ListItems().Item(3); }));
    EXPECT_EQ(pool().SelectedCount(), 5); // it may become a drag of all of them
    xdotool({u"mouseup"_s, u"1"_s});
    EXPECT_TRUE(waitUntil([&] { return pool().SelectedCount() == 1; }));
}

TEST_F(PanesTest, SeveralRowsByKey) {
    click(rowOf(pool(), 1));
    ASSERT_TRUE(waitUntil([&] { return pool().hasFocus() && pool().SelectedCount() == 1; }));
    xdotool({u"key"_s, u"shift+Down"_s, u"shift+Down"_s});
    EXPECT_TRUE(waitUntil([&] { return pool().SelectedCount() == 3; }));
    press(u"ctrl+a"_s);
    EXPECT_TRUE(waitUntil([&] { return pool().SelectedCount() == pool().ListItems().Count(); }));
    press(u"Home"_s);
    EXPECT_TRUE(waitUntil([&] { return pool().SelectedCount() == 1; }));
}

TEST_F(PanesTest, SplittersStopAtTheirLimits) {
    const auto leftOfTree = [this] { return browser().LeftCategoryTreeView(); };
    const auto leftOfList = [this] { return browser().LeftArticleListView(); };
    const double width = right() * twipsPerPixel, step = 5 * twipsPerPixel;

    drag(middleOf("picSplitter"), right());
    EXPECT_TRUE(waitUntil([&] { return leftOfList() > width - 2000 - right() / 10 * twipsPerPixel - step; }));
    EXPECT_LT(leftOfList(), width - 2000);
    drag(middleOf("picSplitter"), -right());
    EXPECT_TRUE(waitUntil([&] { return leftOfList() < leftOfTree() + 2000 + right() / 10 * twipsPerPixel + step; }));
    EXPECT_GT(leftOfList(), 2000 + pool().width() * twipsPerPixel);
    keepPicture(u"panes-splitter-left"_s);
    drag(middleOf("picSplitterArt"), -right());
    EXPECT_TRUE(waitUntil([&] { return leftOfTree() < 2000 + right() / 10 * twipsPerPixel + step; }));
    EXPECT_GT(leftOfTree(), 2000);
    drag(middleOf("picSplitterArt"), right());
    EXPECT_TRUE(waitUntil([&] { return leftOfTree() > leftOfList() - 2000 - right() / 10 * twipsPerPixel - step; }));
    EXPECT_LT(leftOfTree(), leftOfList() - 2000);
    EXPECT_EQ(tree_->geometry().left(), qRound((leftOfTree() + 30) / twipsPerPixel));
}

// The limits are those of the control: a window that is narrower shows a part of it.
TEST_F(PanesTest, ANarrowWindow) {
    window_.setMinimumSize(1, 1);
    window_.resize(150, 300);
    ASSERT_TRUE(waitUntil([&] { return window_.width() == 150; }));
    EXPECT_TRUE(waitUntil([&] { return browser().width() == qRound(4000 / twipsPerPixel); }));
    keepPicture(u"panes-narrow"_s);
    window_.resize(900, 600);
    EXPECT_TRUE(waitUntil([&] { return browser().width() == 900; }));
    EXPECT_LE(browser().LeftArticleListView(), 900 * twipsPerPixel);
    EXPECT_TRUE(asker_.shown.isEmpty());
}

TEST_F(PanesTest, F6GoesFromPaneToPane) {
    click(rowOf(pool(), 1));
    ASSERT_TRUE(waitUntil([&] { return pool().hasFocus(); }));
    press(u"F6"_s);
    EXPECT_TRUE(waitUntil([&] { return tree_->hasFocus(); }));
    press(u"F6"_s);
    EXPECT_TRUE(waitUntil([&] { return list().hasFocus(); }));
    press(u"shift+F6"_s);
    EXPECT_TRUE(waitUntil([&] { return tree_->hasFocus(); }));
}

TEST_F(PanesTest, LettersFindTheNameBehindTheNumber) {
    const Ref<Node> last = tree_->Nodes().Item(1)->LastSibling();
    click(textOf(*tree_->Nodes().Item(1)->FirstSibling()));
    ASSERT_TRUE(waitUntil([&] { return tree_->hasFocus(); }));
    const QString name = last->Text().section(u" - "_s, 1);
    press(name.left(1).toLower());
    EXPECT_TRUE(waitUntil([&] { return tree_->SelectedItem() == last; })) << last->Text().toStdString();
}

TEST_F(PanesTest, PanelsAndDarkColours) {
    for (const char* entry : {"Filters", "EventLog"})
        window_.findChild<QAction*>(QLatin1StringView(entry))->trigger();
    ASSERT_TRUE(waitUntil([&] { return window_.findChild<QWidget*>(u"EventLogDock"_s)->isVisible(); }));
    keepPicture(u"page"_s);
    const QPalette light = QApplication::palette();
    QPalette dark(QColor(53, 53, 53));
    QApplication::setPalette(dark);
    EXPECT_TRUE(waitUntil([&] { return tree_->palette().color(QPalette::Base).lightness() < 128; }));
    keepPicture(u"page-dark"_s);
    QApplication::setPalette(light);
}

} // namespace
