// What the clerk does with the articles of a category of 10,000: numbering, moving, adding; beside the plain client
// interface of the engine that writes the same rows.
#include "bench/OpenCatalogue.h"
#include "bench/Row.h"
#include "browser/ArtCatBrowser.h"
#include "browser/dialogs/frmArticleNewPos.h"
#include "controls/FormRunner.h"
#include "controls/ListView.h"
#include "tests/support/BrowserAccess.h"

#include <QApplication>
#include <QDialog>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Runs = 5;
constexpr int Positions = 10'000;
constexpr int Added = 1'000;
constexpr int Category = 13;

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

/// A browser that shows a category with its 10,000 articles, of a pool that has more.
class BrowserOnCategory {
public:
    explicit BrowserOnCategory(Engine engine, int articles = 2 * Positions)
        : catalogue(engine)
        , raw(*catalogue.raw)
        , articles_(articles) {
        insertRows();
        fill();
        catalogue.settle();
        browser.setBackend(catalogue.database);
        browser.setWorkspace(catalogue.workspace);
        browser.resize(1200, 800);
        browser.show();
        if (browser.Populate() != 1) qFatal("the catalogue cannot be read");
        QApplication::processEvents();
        show();
    }

    /// The category with articles at positions 1 to 10,000, whatever was there before.
    void fill() const {
        raw.exec(u"DELETE FROM \"ARTKAT\";"
                 "INSERT INTO \"ARTKAT\" (\"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", \"Order\") "
                 "SELECT \"Artikel-Schlüssel\", %1, \"Artikel-Schlüssel\" FROM \"ARTIKEL\" WHERE "
                 "\"Artikel-Schlüssel\" <= %2 ORDER BY \"Artikel-Schlüssel\""_s.arg(Category)
                     .arg(Positions));
    }
    std::vector<int> rowKeys() const {
        std::vector<int> keys;
        const auto statement = raw.prepare(u"SELECT \"ArtKatID\" FROM \"ARTKAT\" ORDER BY \"Order\""_s);
        while (statement->step())
            keys.push_back(statement->integer(0));
        return keys;
    }
    /// Positions from 1 in that sequence of rows, by key, in one transaction; on a server each row is read as well,
    /// since whoever goes through rows that may change has to ask for each of them there.
    void numberRaw(const std::vector<int>& keys) const {
        raw.begin();
        const auto read = raw.prepare(u"SELECT * FROM \"ARTKAT\" WHERE \"ArtKatID\" = ?1"_s);
        const bool reads = catalogue.engine() == Engine::Server;
        const auto update = raw.prepare(u"UPDATE \"ARTKAT\" SET \"Order\" = ?1, \"LetzteÄnderung\" = "
                                        "'2026-11-21 12:00:00' WHERE \"ArtKatID\" = ?2"_s);
        int position = 0;
        for (const int key : keys) {
            if (reads && !read->run(key)) qFatal("a row is missing");
            update->run(++position, key);
        }
        raw.commit();
    }
    /// For each of the last articles: is it there, asked so many times, else in with it.
    void addRaw(int questions) const {
        raw.begin();
        const auto find = raw.prepare(u"SELECT \"ArtKatID\" FROM \"ARTKAT\" WHERE \"Artikel-Schlüssel\" = ?1 AND "
                                      "\"Kategorie-Schlüssel\" = ?2"_s);
        const auto insert = raw.prepare(u"INSERT INTO \"ARTKAT\" (\"Artikel-Schlüssel\", \"Kategorie-Schlüssel\", "
                                        "\"Order\", \"LetzteÄnderung\") VALUES (?1, ?2, ?3, '2026-11-21 12:00:00')"_s);
        for (int row = 0; row < Added; ++row)
            addOne(*find, *insert, questions, row);
        raw.commit();
    }
    mkl::ListView& list() const { return *browser.ArticlePoolListView(); }
    /// From the end of the pool.
    mkl::Ref<mkl::ListItem> lastArticle(int row) const { return list().ListItems().Item(mkl::Long(articles_ - row)); }
    mkl::ArtCatBrowserPrivate& hub() const { return mkl::BrowserAccess::hub(browser); }

    const OpenCatalogue catalogue;
    RawClient& raw;
    mkl::ArtCatBrowser browser;

private:
    void insertRows() const {
        raw.exec(u"INSERT INTO \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\", \"Kategoriename\", \"Order\", "
                 "\"Aktiv\", \"Absender-Schlüssel\") VALUES (%1, 'Schrauben', 1, -1, 1);"
                 "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %2) "
                 "INSERT INTO \"ARTIKEL\" (\"Artikel-Schlüssel\", \"Artikelname\", \"Aktiv\", "
                 "\"Absender-Schlüssel\") SELECT i, 'Sechskantschraube M' || i % 97 || ' x ' || (1000000 + i), -1, 1 "
                 "FROM n"_s.arg(Category)
                     .arg(articles_));
    }
    void addOne(RawQuery& find, RawQuery& insert, int questions, int row) const {
        const int article = articles_ - row;
        for (int question = 0; question < questions; ++question)
            if (find.run(article, Category)) return;
        insert.run(article, Category, Positions + 1 + row);
    }
    void show() {
        browser.setSelected(mkl::acbPaneCategoryTree, Category);
        if (browser.ArticleListView()->ListItems().Count() != Positions) qFatal("the list is incomplete");
    }

    const int articles_;
};

/// Ours and the baseline in turns.
Result inTurns(const QString& client, const std::function<void()>& ours, const std::function<void()>& raw) {
    std::vector<double> ourTimes, rawTimes;
    for (int run = 0; run < Runs; ++run) {
        ourTimes.push_back(medianSeconds(1, ours));
        rawTimes.push_back(medianSeconds(1, raw));
    }
    Result result;
    result.unit = u"s"_s;
    result.goal = 3;
    result.ours = median(ourTimes);
    result.baselines = {{client, median(rawTimes)}};
    return result;
}

} // namespace

Result renumberRow(Engine engine) {
    const BrowserOnCategory category(engine);
    const std::vector<int> keys = category.rowKeys();
    const auto ours = [&] {
        category.catalogue.workspace->BeginTrans();
        category.hub().articleOrder->Cat_RenumberArticles(Category, 0, 0);
        category.catalogue.workspace->CommitTrans();
    };
    Result result = inTurns(category.raw.name(), ours, [&] { category.numberRaw(keys); });
    result.work = u"Cat_RenumberArticles over 10,000 positions, with its transaction"_s;
    return result;
}

Result moveRow(Engine engine) {
    const BrowserOnCategory category(engine);
    std::vector<int> keys = category.rowKeys();
    bool done = true;
    // From the last to the first place, so that every row is written.
    const auto ours = [&] {
        done &= category.hub().articleOrder->ReorderCategories(1, Positions, keys.front(), keys.back(), Category);
        std::ranges::rotate(keys, keys.end() - 1);
    };
    Result result = inTurns(category.raw.name(), ours, [&] { category.numberRaw(keys); });
    if (!done) qFatal("a move has failed");
    result.work = u"ReorderCategories from the last to the first of 10,000 positions"_s;
    return result;
}

namespace {

/// Of the articles in the pool; making a million rows on a server takes longer than all commands.
int poolOf(Engine engine) {
    return engine == Engine::File ? 1'000'000 : 100'000;
}

/// The last articles of the pool, which are in no category, come behind the last position.
Result addLastArticles(Engine engine, const QString& work, int questions,
                       mkl::Long (*add)(const BrowserOnCategory& category)) {
    const BrowserOnCategory category(engine, poolOf(engine));
    const AddingRunner user;
    std::vector<mkl::Ref<mkl::ListItem>> selected;
    for (int row = 0; row < Added; ++row)
        selected.push_back(category.lastArticle(row));
    std::vector<double> ours, raw;
    for (int run = 0; run < Runs; ++run) {
        category.list().deselectOthers({});
        for (const auto& item : selected)
            item->setSelected(true);
        mkl::Long added = 0;
        ours.push_back(medianSeconds(1, [&] { added = add(category); }));
        if (added != Added) qFatal("articles are missing");
        category.fill();
        raw.push_back(medianSeconds(1, [&] { category.addRaw(questions); }));
        category.fill();
    }
    Result result;
    result.work = work;
    result.unit = u"ms"_s;
    result.goal = 3;
    result.ours = 1000 * median(ours);
    result.baselines = {{category.raw.name(), 1000 * median(raw)}};
    return result;
}

mkl::Long addSelected(const BrowserOnCategory& category) {
    mkl::ArticleAssignment& assignment = *category.hub().articleAssignment;
    mkl::ArticleAssignment::ItemList items;
    assignment.Article_SelectedArray(items, mkl::acbPaneArticlePool);
    category.catalogue.workspace->BeginTrans();
    const mkl::Long added = assignment.Cat_AddArticles(Category, Positions + 1, items, mkl::acbPaneArticlePool);
    category.catalogue.workspace->CommitTrans();
    return added;
}

mkl::Long dropSelected(const BrowserOnCategory& category) {
    return category.hub().dropActions->DragDrop_AddArticles(Category, u"Ziel"_s, mkl::acbPaneArticlePool, 0, {}, 0);
}

} // namespace

Result addRow(Engine engine) {
    return addLastArticles(engine, u"Cat_AddArticles of 1,000 to a category of 10,000, of a large pool"_s, 1,
                           addSelected);
}

Result dropRow(Engine engine) {
    const int questions = engine == Engine::Server ? 2 : 1;
    return addLastArticles(engine, u"the whole drop of them, which asks for each pair twice"_s, questions,
                           dropSelected);
}

} // namespace bench
