// The browser's lists with 1,000,000 articles: filling, a click on a category, scrolling; beside the plain C interface
// and a QTreeWidget filled from Qt's own SQL module.
#include "bench/Articles.h"
#include "bench/BrowserOnPool.h"
#include "bench/Row.h"
#include "bench/WidgetOnPool.h"

#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Runs = 3;
constexpr int Clicks = 10;
constexpr int Frames = 200;
constexpr int ArticlesOfACategory = 2500;
constexpr int FirstCategory = 13, SecondCategory = 23; // the demo catalogue's own

double seconds(const std::function<void()>& call) {
    return medianSeconds(1, call);
}

double fillSeconds(BrowserOnPool& host) {
    std::vector<double> times;
    for (int run = 0; run < Runs; ++run) {
        host.empty();
        times.push_back(seconds([&] { host.read(); }));
        if (host.list().ListItems().Count() != Articles) qFatal("the pool is incomplete");
    }
    return median(times);
}

/// Leaves two categories, as roots, with as many articles each.
void makeCategories(const RawDatabase& raw) {
    const QByteArray statements =
        u"DELETE FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" NOT IN (%1, %2);"
        "UPDATE \"ARTIKEL/KATEGORIEN\" SET Parent = NULL; DELETE FROM ARTKAT;"
        "INSERT INTO ARTKAT (ArtKatID, \"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", \"Order\") "
        "SELECT n, artikel, iif(n % 2, %1, %2), (n + 1) / 2 FROM (SELECT row_number() OVER () AS n, "
        "\"Artikel-Schlüssel\" AS artikel FROM ARTIKEL LIMIT %3)"_s.arg(FirstCategory)
            .arg(SecondCategory)
            .arg(2 * ArticlesOfACategory)
            .toUtf8();
    raw.require(sqlite3_exec(raw.handle(), statements.constData(), nullptr, nullptr, nullptr));
}

struct Assigned {
    int key, position, article;
    QString name;
    bool active;
};

std::vector<Assigned> readCategory(RawStatement& statement, int category) {
    std::vector<Assigned> rows;
    statement.reset();
    statement.bind(1, category);
    while (statement.step())
        rows.push_back({statement.integer(0), statement.integer(1), statement.integer(2), statement.text(3),
                        statement.integer(4) != 0});
    return rows;
}

void clickOn(mkl::TreeView& tree, int row) {
    const QPoint point = tree.visualRect(tree.model()->index(row, 0)).center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, point, tree.viewport()->mapToGlobal(point), Qt::LeftButton, buttons, {});
        QApplication::sendEvent(tree.viewport(), &event);
    }
    QApplication::processEvents(); // the list is painted
}

} // namespace

Result fillRow() {
    BrowserOnPool host;
    Result result;
    result.work = u"PopulateLVArt(True) until painted, 1,000,000 articles, sorted as shown"_s;
    result.unit = u"s"_s;
    result.goal = 2.5;
    result.ours = fillSeconds(host);
    std::size_t read = 0;
    result.baselines = {{u"C API"_s, medianSeconds(Runs, [&] { read = readArticles(*host.pool.raw).size(); })}};
    if (read != std::size_t(Articles)) qFatal("the rows differ");
    return result;
}

Result fillWidgetRow() {
    Result result;
    result.work = u"the same beside a QTreeWidget filled from QSqlQuery, sorted and shown"_s;
    result.unit = u"s"_s;
    result.goal = 1.0 / 3;
    if (!WidgetOnPool::isPossible()) {
        result.skipped = u"Qt's SQL driver for SQLite is missing"_s;
        return result;
    }
    BrowserOnPool host;
    result.ours = fillSeconds(host);
    std::vector<double> times;
    for (int run = 0; run < Runs; ++run) {
        WidgetOnPool widget(host.pool.file());
        times.push_back(seconds([&] { widget.read(); }));
        if (widget.count() != Articles) qFatal("the widget is incomplete");
    }
    result.baselines = {{u"QTreeWidget"_s, median(times)}};
    return result;
}

Result fillMemoryRow() {
    Result result;
    result.work = u"heap that the filled pool takes, beside that of the QTreeWidget"_s;
    result.unit = u"MB"_s;
    result.goal = 1.0 / 3;
    if (!WidgetOnPool::isPossible()) {
        result.skipped = u"Qt's SQL driver for SQLite is missing"_s;
        return result;
    }
    BrowserOnPool host;
    host.empty();
    double before = heapBytes();
    host.read();
    result.ours = (heapBytes() - before) / 1e6;
    before = heapBytes();
    WidgetOnPool widget(host.pool.file());
    widget.read();
    result.baselines = {{u"QTreeWidget"_s, (heapBytes() - before) / 1e6}};
    return result;
}

Result clickRow() {
    BrowserOnPool host;
    makeCategories(*host.pool.raw);
    if (host.browser.Populate() != 2) qFatal("the categories are not there");
    QApplication::processEvents();
    mkl::TreeView& tree = *host.browser.CategoryTreeView();
    std::vector<double> ours, raw;
    RawStatement statement(*host.pool.raw,
                           "SELECT K.ArtKatID, K.\"Order\", K.\"Artikel-Schlüssel\", A.Artikelname, A.Aktiv "
                           "FROM ARTKAT AS K JOIN ARTIKEL AS A ON K.\"Artikel-Schlüssel\" = A.\"Artikel-Schlüssel\" "
                           "WHERE K.\"Kategorie-Schlüssel\" = ?1 ORDER BY K.\"Order\"");
    for (int turn = 0; turn < Clicks; ++turn) {
        ours.push_back(seconds([&] { clickOn(tree, 1 - turn % 2); }));
        if (host.browser.ArticleListView()->ListItems().Count() != ArticlesOfACategory)
            qFatal("the list is incomplete");
        std::size_t read = 0;
        raw.push_back(
            seconds([&] { read = readCategory(statement, turn % 2 ? FirstCategory : SecondCategory).size(); }));
        if (read != std::size_t(ArticlesOfACategory)) qFatal("the rows differ");
    }
    Result result;
    result.work = u"click on a category of 2,500 articles until they are painted"_s;
    result.unit = u"ms"_s;
    result.goal = 1;
    result.ours = 1000 * median(ours);
    result.baselines = {{u"3 times the C API"_s, 3000 * median(raw)}, {u"a frame"_s, 16}};
    return result;
}

Result scrollRow() {
    BrowserOnPool host;
    QScrollBar& bar = *host.list().verticalScrollBar();
    std::vector<double> times;
    for (int frame = 0; frame < Frames; ++frame) {
        bar.setValue(int(qint64(bar.maximum()) * frame / Frames));
        times.push_back(seconds([&] { host.list().viewport()->repaint(); }));
    }
    Result result;
    result.work = u"painting a frame of the scrolled pool of 1,000,000 rows, 95th of 100 by time"_s;
    result.unit = u"ms"_s;
    result.goal = 16;
    std::ranges::sort(times);
    result.ours = 1000 * times.at(times.size() * 19 / 20);
    return result;
}

} // namespace bench
