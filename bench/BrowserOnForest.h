#pragma once
// A browser on a catalogue made for commands over many categories, and the plain C interface to the same file.
#include "bench/OpenCatalogue.h"
#include "bench/Row.h"
#include "controls/Asker.h"
#include "controls/TreeView.h"
#include "tests/support/BrowserAccess.h"

#include <vector>

namespace bench {

using namespace Qt::StringLiterals;

/// Yes to every question.
class YesSayer final : public mkl::Asker {
public:
    YesSayer()
        : former_(mkl::setAsker(this)) {}
    ~YesSayer() override { mkl::setAsker(former_); }
    Q_DISABLE_COPY_MOVE(YesSayer)

    mkl::Long ask(const mkl::MessageBox&) override { return mkl::vbYes; }
    std::optional<QString> askText(const QString&, const QString&, const QString&) override { return {}; }

private:
    mkl::Asker* former_;
};

/// A browser on a catalogue with a large subtree and a large level.
class BrowserOnForest {
public:
    static constexpr int Root = 1; ///< of the subtree; its neighbour is the parent of the level
    static constexpr int LevelParent = 2;
    static constexpr int FirstOfSubtree = 100'000;
    static constexpr int FirstOfLevel = 200'000;

    /// subtree: categories with the root. level: categories below LevelParent.
    BrowserOnForest(Engine engine, int subtree, int level)
        : catalogue_(engine)
        , raw(*catalogue_.raw)
        , subtree_(subtree) {
        insert(Root, 1, u"NULL"_s, 1);
        insert(LevelParent, 1, u"NULL"_s, 2);
        insertSubtree();
        insert(FirstOfLevel, level, QString::number(LevelParent));
        catalogue_.settle();
        browser.setBackend(catalogue_.database);
        browser.setWorkspace(catalogue_.workspace);
        browser.resize(1200, 800);
        browser.show();
        if (browser.Populate() != 2 + subtree - 1 + level) qFatal("the tree is incomplete");
    }

    /// Five levels, ten categories below each.
    void insertSubtree() const {
        exec(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
             "INSERT INTO \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\", \"Kategoriename\", \"Parent\", \"Order\", "
             "\"Aktiv\", \"Absender-Schlüssel\") "
             "SELECT %2 + i, 'K' || i, CASE WHEN i <= 10 THEN %3 ELSE %2 + (i - 1) / 10 END, i, -1, 1 FROM n"_s
                 .arg(subtree_ - 1)
                 .arg(FirstOfSubtree)
                 .arg(Root));
    }
    void insert(int first, int count, const QString& parent, int order = 0) const {
        exec(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
             "INSERT INTO \"ARTIKEL/KATEGORIEN\" (\"Kategorie-Schlüssel\", \"Kategoriename\", \"Parent\", \"Order\", "
             "\"Aktiv\", \"Absender-Schlüssel\") SELECT %2 + i - 1, 'K' || (100000 - i), %3, %4 + i, -1, 1 FROM n"_s
                 .arg(count)
                 .arg(first)
                 .arg(parent)
                 .arg(order));
    }
    void exec(const QString& statements) const { raw.exec(statements); }
    std::vector<int> keys(const QString& query) const {
        std::vector<int> keys;
        const auto statement = raw.prepare(query);
        while (statement->step())
            keys.push_back(statement->integer(0));
        return keys;
    }
    /// For each key the statement that looks for its row, then the one that changes it; in one transaction.
    void runForKeys(const std::vector<int>& rows, const QString& change) const {
        raw.begin();
        const auto seek = raw.prepare(u"SELECT * FROM \"ARTIKEL/KATEGORIEN\" WHERE \"Kategorie-Schlüssel\" = ?1"_s);
        const auto write = raw.prepare(change);
        const bool isNumbering = change.contains(u"?2"_s);
        int position = 0;
        for (const int key : rows) {
            if (!seek->run(key)) qFatal("a row is missing");
            isNumbering ? write->run(key, ++position) : write->run(key);
        }
        raw.commit();
    }
    double readSeconds() {
        return medianSeconds(1, [&] { browser.RefreshPane(mkl::acbPaneCategoryTree); });
    }
    Engine engine() const { return catalogue_.engine(); }
    void select(int category) { browser.setSelected(mkl::acbPaneCategoryTree, category); }
    mkl::ArtCatBrowserPrivate& hub() const { return mkl::BrowserAccess::hub(browser); }

private:
    const OpenCatalogue catalogue_;

public:
    RawClient& raw;
    mkl::ArtCatBrowser browser;

private:
    const int subtree_;
};

} // namespace bench
