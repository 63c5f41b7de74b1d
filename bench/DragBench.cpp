// A drag over a tree of 100,000 categories, all of them expanded, beside a QTreeWidget that follows the mouse.
#include "bench/Articles.h"
#include "bench/Row.h"
#include "browser/ArtCatBrowser.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/DemoCatalogue.h"
#include "controls/IntervalTimer.h"
#include "controls/TreeView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Categories = 100000;
constexpr int Moves = 200;
constexpr double allowed = 4; // ms

class Forest {
public:
    Forest() {
        mkl::DemoCatalogue demo;
        demo.articles = 10;
        demo.categories = Categories;
        demo.create(file());
        database_ = mkl::openCatalogue(*workspace_, file());
        browser.resize(900, 600);
        browser.setBackend(database_);
        browser.setSpringOpenInterval(60000);
        browser.show();
        if (browser.Populate() != Categories) qFatal("the tree is incomplete");
        tree().expandAll();
        tree().scrollTo(tree().model()->index(tree().model()->rowCount() / 2, 0), QAbstractItemView::PositionAtCenter);
        QApplication::processEvents();
    }

    mkl::TreeView& tree() const { return *browser.CategoryTreeView(); }

    /// A drag from the node at that point.
    void beginDrag(const QPoint& point) {
        QCursor::setPos(tree().viewport()->mapToGlobal(point));
        QTest::mousePress(browser.windowHandle(), Qt::LeftButton, {}, inWindow(point));
        browser.findChild<mkl::IntervalTimer*>(u"DragTimer"_s)->tick();
    }
    void endDrag(const QPoint& point) {
        tree().Drag(mkl::vbCancelDrag);
        QTest::mouseRelease(browser.windowHandle(), Qt::LeftButton, {}, inWindow(point));
    }

    mkl::ArtCatBrowser browser;

private:
    QString file() const { return folder_.filePath(u"forest.sqlite"_s); }
    QPoint inWindow(const QPoint& point) const { return tree().viewport()->mapTo(&browser, point); }

    QTemporaryDir folder_;
    mkl::Ref<dao::Workspace> workspace_ = dao::DBEngine::CreateWorkspace();
    mkl::Ref<dao::Database> database_;
};

/// Moves between two rows: every move finds another one.
QPoint placeOf(const QTreeView& tree, int move) {
    const int row = tree.visualRect(tree.indexAt({5, 5})).height();
    return {60, (3 + move % 15) * row + row / 2};
}

double medianMs(const std::function<void(int)>& move) {
    std::vector<double> times;
    for (int each = 0; each < Moves; ++each) {
        QElapsedTimer timer;
        timer.start();
        move(each);
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return median(std::move(times));
}

double dragMs() {
    Forest forest;
    mkl::TreeView& tree = forest.tree();
    forest.beginDrag(placeOf(tree, 0));
    int highlights = 0;
    mkl::Ref<mkl::Node> last;
    const double ms = medianMs([&](int move) {
        QCursor::setPos(tree.viewport()->mapToGlobal(placeOf(tree, move)));
        QApplication::processEvents();
        QApplication::processEvents(); // the rows are painted
        highlights += std::exchange(last, tree.DropHighlight()) != tree.DropHighlight();
    });
    if (highlights < Moves - 2) qFatal("the drag does not follow the mouse");
    forest.endDrag(placeOf(tree, 0));
    return ms;
}

double widgetMs() {
    QTreeWidget tree;
    tree.setHeaderHidden(true);
    tree.setUniformRowHeights(true);
    tree.resize(300, 580);
    QTreeWidgetItem* parent = nullptr;
    for (int number = 0; number < Categories; ++number) {
        auto* const item = number % 10 ? new QTreeWidgetItem(parent) : (parent = new QTreeWidgetItem(&tree));
        item->setText(0, u"%1 - Kategorie"_s.arg(number));
    }
    tree.expandAll();
    tree.show();
    tree.scrollToItem(tree.topLevelItem(tree.topLevelItemCount() / 2), QAbstractItemView::PositionAtCenter);
    QApplication::processEvents();
    return medianMs([&](int move) {
        tree.setCurrentItem(tree.itemAt(placeOf(tree, move)));
        QApplication::processEvents();
    });
}

} // namespace

Result dragRow() {
    Result result;
    result.work = u"a move of the mouse during a drag, 100,000 nodes; at most 4 ms"_s;
    result.unit = u"ms"_s;
    result.ours = dragMs();
    const double widget = widgetMs();
    result.baselines = {{u"QTreeWidget::itemAt, setCurrentItem"_s, widget}};
    result.goal = allowed / widget;
    return result;
}

} // namespace bench
