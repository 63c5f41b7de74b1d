// What the clerk does with the articles of a category of 10,000: numbering, moving, adding; beside the plain C
// interface that writes the same rows.
#include "bench/BrowserOnPool.h"
#include "bench/Row.h"
#include "browser/dialogs/frmArticleNewPos.h"
#include "controls/FormRunner.h"
#include "tests/support/BrowserAccess.h"

#include <QDialog>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Runs = 5;
constexpr int Positions = 10'000;
constexpr int Added = 1'000;
constexpr int Category = 13; // one of the demo catalogue's own

/// Lets every article come behind the last position.
class AddingRunner final : public mkl::FormRunner {
public:
    AddingRunner()
        : former_(mkl::setFormRunner(this)) {}
    ~AddingRunner() override { mkl::setFormRunner(former_); }
    Q_DISABLE_COPY_MOVE(AddingRunner)

    int run(QDialog& form) override {
        auto& position = dynamic_cast<mkl::frmArticleNewPos&>(form);
        position.Opt(1).setValue(true);
        position.BB.click(mkl::ButtonBar::Confirm);
        return 0;
    }

private:
    mkl::FormRunner* former_;
};

/// A browser that shows the category with its 10,000 articles.
class BrowserOnCategory {
public:
    explicit BrowserOnCategory(int articles = 2 * Positions)
        : host(articles) {
        host.browser.setWorkspace(host.pool.workspace());
        fill();
        show();
    }

    /// The category with articles at positions 1 to 10,000, whatever was there before.
    void fill() const {
        exec(
            u"DELETE FROM ARTKAT;"
            "INSERT INTO ARTKAT (\"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", \"Order\") SELECT artikel, %1, n FROM "
            "(SELECT row_number() OVER () AS n, \"Artikel-Schlüssel\" AS artikel FROM ARTIKEL LIMIT %2)"_s.arg(Category)
                .arg(Positions));
    }
    void show() {
        host.browser.RefreshPane(mkl::acbPaneCategoryTree);
        host.browser.setSelected(mkl::acbPaneCategoryTree, Category);
        if (host.browser.ArticleListView()->ListItems().Count() != Positions) qFatal("the list is incomplete");
    }
    void exec(const QString& statements) const {
        host.pool.raw->require(
            sqlite3_exec(host.pool.raw->handle(), statements.toUtf8().constData(), nullptr, nullptr, nullptr));
    }
    std::vector<int> rowKeys() const {
        std::vector<int> keys;
        const RawStatement statement(*host.pool.raw, "SELECT ArtKatID FROM ARTKAT ORDER BY \"Order\"");
        while (statement.step())
            keys.push_back(statement.integer(0));
        return keys;
    }
    /// Positions from 1 in that sequence of rows, by key, in one transaction.
    void numberRaw(const std::vector<int>& keys) const {
        exec(u"BEGIN IMMEDIATE"_s);
        RawStatement update(
            *host.pool.raw,
            "UPDATE ARTKAT SET \"Order\" = ?1, LetzteÄnderung = '2026-11-21 12:00:00' WHERE ArtKatID = ?2");
        int position = 0;
        for (const int key : keys) {
            update.bind(1, ++position);
            update.bind(2, key);
            update.step();
            update.reset();
        }
        exec(u"COMMIT"_s);
    }
    /// For each of the last articles: is it there, else in with it.
    void addRaw() const {
        exec(u"BEGIN IMMEDIATE"_s);
        RawStatement find(*host.pool.raw, "SELECT ArtKatID FROM ARTKAT WHERE \"Artikel-Schlüssel\" = ?1 AND "
                                          "\"Kategorie-Schlüssel\" = ?2");
        RawStatement insert(*host.pool.raw, "INSERT INTO ARTKAT (\"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", "
                                            "\"Order\", LetzteÄnderung) VALUES (?1, ?2, ?3, '2026-11-21 12:00:00')");
        const auto& articles = host.list().ListItems();
        for (int row = 0; row < Added; ++row) {
            const int article = articles.Item(mkl::Long(Articles - row))->Tag().toLong();
            find.bind(1, article);
            find.bind(2, Category);
            const bool isThere = find.step();
            find.reset();
            if (isThere) continue;
            insert.bind(1, article);
            insert.bind(2, Category);
            insert.bind(3, Positions + 1 + row);
            insert.step();
            insert.reset();
        }
        exec(u"COMMIT"_s);
    }
    mkl::ArtCatBrowserPrivate& hub() const { return mkl::BrowserAccess::hub(host.browser); }

    BrowserOnPool host;
};

/// Ours and the baseline in turns.
Result inTurns(const std::function<void()>& ours, const std::function<void()>& raw) {
    std::vector<double> ourTimes, rawTimes;
    for (int run = 0; run < Runs; ++run) {
        ourTimes.push_back(medianSeconds(1, ours));
        rawTimes.push_back(medianSeconds(1, raw));
    }
    Result result;
    result.unit = u"s"_s;
    result.goal = 3;
    result.ours = median(ourTimes);
    result.baselines = {{u"C API"_s, median(rawTimes)}};
    return result;
}

} // namespace

Result renumberRow() {
    const BrowserOnCategory category;
    const std::vector<int> keys = category.rowKeys();
    const auto ours = [&] {
        category.host.pool.workspace()->BeginTrans();
        category.hub().articleOrder->Cat_RenumberArticles(Category, 0, 0);
        category.host.pool.workspace()->CommitTrans();
    };
    Result result = inTurns(ours, [&] { category.numberRaw(keys); });
    result.work = u"Cat_RenumberArticles over 10,000 positions, with its transaction"_s;
    return result;
}

Result moveRow() {
    const BrowserOnCategory category;
    std::vector<int> keys = category.rowKeys();
    bool done = true;
    // From the last to the first place, so that every row is written.
    const auto ours = [&] {
        done &= category.hub().articleOrder->ReorderCategories(1, Positions, keys.front(), keys.back(), Category);
        std::ranges::rotate(keys, keys.end() - 1);
    };
    Result result = inTurns(ours, [&] { category.numberRaw(keys); });
    if (!done) qFatal("a move has failed");
    result.work = u"ReorderCategories from the last to the first of 10,000 positions"_s;
    return result;
}

namespace {

/// The last articles of the pool, which are in no category, come behind the last position.
Result addLastArticles(const QString& work, mkl::Long (*add)(const BrowserOnCategory& category)) {
    BrowserOnCategory category(Articles);
    const mkl::ListView& pool = category.host.list();
    const AddingRunner user;
    std::vector<mkl::Ref<mkl::ListItem>> selected;
    for (int row = 0; row < Added; ++row)
        selected.push_back(pool.ListItems().Item(mkl::Long(Articles - row)));
    std::vector<double> ours, raw;
    for (int run = 0; run < Runs; ++run) {
        category.host.list().deselectOthers({});
        for (const auto& item : selected)
            item->setSelected(true);
        mkl::Long added = 0;
        ours.push_back(medianSeconds(1, [&] { added = add(category); }));
        if (added != Added) qFatal("articles are missing");
        category.fill();
        raw.push_back(medianSeconds(1, [&] { category.addRaw(); }));
        category.fill();
    }
    Result result;
    result.work = work;
    result.unit = u"ms"_s;
    result.goal = 3;
    result.ours = 1000 * median(ours);
    result.baselines = {{u"C API"_s, 1000 * median(raw)}};
    return result;
}

mkl::Long addSelected(const BrowserOnCategory& category) {
    mkl::ArticleAssignment& assignment = *category.hub().articleAssignment;
    mkl::ArticleAssignment::ItemList items;
    assignment.Article_SelectedArray(items, mkl::acbPaneArticlePool);
    category.host.pool.workspace()->BeginTrans();
    const mkl::Long added = assignment.Cat_AddArticles(Category, Positions + 1, items, mkl::acbPaneArticlePool);
    category.host.pool.workspace()->CommitTrans();
    return added;
}

mkl::Long dropSelected(const BrowserOnCategory& category) {
    return category.hub().dropActions->DragDrop_AddArticles(Category, u"Ziel"_s, mkl::acbPaneArticlePool, 0, {}, 0);
}

} // namespace

Result addRow() {
    return addLastArticles(u"Cat_AddArticles of 1,000 to a category of 10,000, of 1,000,000 articles"_s, addSelected);
}

Result dropRow() {
    return addLastArticles(u"the whole drop of them, which asks for each pair twice"_s, dropSelected);
}

} // namespace bench
