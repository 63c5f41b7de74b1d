// Reading from a server: 1,000,000 articles and a forest of 100,000 categories, beside the server's own client
// interface that reads the same rows.
#include "bench/Articles.h"
#include "bench/Row.h"
#include "bench/ServerCatalogue.h"
#include "dao/Walk.h"

#include <QHash>
#include <QTreeWidget>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Runs = 5;
constexpr int Articles = 1'000'000;
constexpr int Categories = 100'000;

std::vector<Article> readByName(const ServerCatalogue& server) {
    std::vector<Article> articles;
    const auto rows = server.database->OpenRecordset(
        u"SELECT * FROM ARTIKEL WHERE [Absender-Schlüssel] Like '*' ORDER BY [Artikel-Schlüssel]"_s,
        dao::dbOpenSnapshot);
    for (; !rows->Eof(); rows->MoveNext())
        articles.push_back({rows->value(u"Artikel-Schlüssel").toLong(), rows->value(u"Artikelname").toText(),
                            rows->value(u"Aktiv").toBoolean()});
    return articles;
}

std::vector<Article> readRaw(const ServerConnection& raw) {
    const RawResult rows = raw.run("pool");
    const int key = columnOf(*rows, "Artikel-Schlüssel"), name = columnOf(*rows, "Artikelname"),
              active = columnOf(*rows, "Aktiv");
    std::vector<Article> articles;
    for (int row = 0; row < PQntuples(rows.get()); ++row)
        articles.push_back({integerAt(*rows, row, key), textAt(*rows, row, name), integerAt(*rows, row, active) != 0});
    return articles;
}

} // namespace

Result serverPoolRow() {
    Result result;
    result.skipped = ServerCatalogue::missing();
    result.work = u"snapshot of the pool on a server, 1,000,000 articles, 3 fields by name"_s;
    result.unit = u"s"_s;
    result.goal = 1.6;
    if (!result.skipped.isEmpty()) return result;
    const ServerCatalogue server(Articles, 10, 10);
    server.raw->prepare("pool", "SELECT * FROM \"ARTIKEL\" WHERE \"Absender-Schlüssel\" IS NOT NULL ORDER BY "
                                "\"Artikel-Schlüssel\"");
    std::vector<Article> ours, raw;
    std::vector<double> ourTimes, rawTimes;
    for (int run = 0; run < Runs; ++run) {
        ourTimes.push_back(medianSeconds(1, [&] { ours = readByName(server); }));
        rawTimes.push_back(medianSeconds(1, [&] { raw = readRaw(*server.raw); }));
    }
    result.ours = median(ourTimes);
    result.baselines = {{u"libpq in binary"_s, median(rawTimes)}};
    const bool same = ours.size() == raw.size() && ours.back().key == raw.back().key &&
                      ours.front().name == raw.front().name && ours.size() == std::size_t(Articles);
    if (!same) qFatal("the rows differ");
    return result;
}

namespace {

struct ServerNode {
    int key, parent; ///< 0 for a root
    QString text;
};

QString nodeText(int order, const QString& name) {
    return u"%1 - %2"_s.arg(order, 3, 10, '0'_L1).arg(name);
}

/// Category by category, each before those below it, with a statement for each.
void walk(dao::Database& database, int parent, const QString& criterion, std::vector<ServerNode>& nodes) {
    const auto rows = database.OpenRecordset(
        u"SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE "_s + criterion + u" ORDER BY [Order];"_s, dao::dbOpenForwardOnly);
    for (; !rows->Eof(); rows->MoveNext()) {
        const int key = rows->value(u"Kategorie-Schlüssel").toLong();
        nodes.push_back(
            {key, parent, nodeText(rows->value(u"Order").toLong(), rows->value(u"Kategoriename").toText())});
        walk(database, key, u"[Parent]="_s + QString::number(key), nodes);
    }
}

std::vector<ServerNode> readWhole(const ServerConnection& raw) {
    const RawResult rows = raw.run("tree");
    const int key = columnOf(*rows, "Kategorie-Schlüssel"), parent = columnOf(*rows, "Parent"),
              order = columnOf(*rows, "Order"), name = columnOf(*rows, "Kategoriename");
    std::vector<ServerNode> nodes;
    for (int row = 0; row < PQntuples(rows.get()); ++row)
        nodes.push_back({integerAt(*rows, row, key),
                         PQgetisnull(rows.get(), row, parent) ? 0 : integerAt(*rows, row, parent),
                         nodeText(integerAt(*rows, row, order), textAt(*rows, row, name))});
    return nodes;
}

// A parent's key is smaller than those of its children, so that they come after it.
void fillWidget(const std::vector<ServerNode>& nodes) {
    QTreeWidget tree;
    QHash<int, QTreeWidgetItem*> items;
    for (const ServerNode& node : nodes) {
        QTreeWidgetItem*& item = items[node.key];
        item = node.parent == 0 ? new QTreeWidgetItem(&tree) : new QTreeWidgetItem(items[node.parent]);
        item->setText(0, node.text);
        item->setData(0, Qt::UserRole, node.key);
    }
}

} // namespace

Result serverTreeRow() {
    Result result;
    result.skipped = ServerCatalogue::missing();
    result.work = u"walk through 100,000 categories on a server, a statement for each, with a QTreeWidget"_s;
    result.unit = u"s"_s;
    result.goal = 3;
    if (!result.skipped.isEmpty()) return result;
    const ServerCatalogue server(10, Categories, 10);
    server.raw->prepare("tree", "SELECT * FROM \"ARTIKEL/KATEGORIEN\" ORDER BY \"Kategorie-Schlüssel\"");
    std::vector<ServerNode> walked, whole;
    result.ours = medianSeconds(Runs, [&] {
        walked.clear();
        const dao::Walk readAhead(*server.database);
        walk(*server.database, 0, u"[Parent] Is Null"_s, walked);
        fillWidget(walked);
    });
    const double read = medianSeconds(Runs, [&] { whole = readWhole(*server.raw); });
    const double fill = medianSeconds(Runs, [&] { fillWidget(whole); });
    if (walked.size() != std::size_t(Categories) || whole.size() != walked.size()) qFatal("the tree is incomplete");
    result.baselines = {{u"whole table by libpq"_s, read}, {u"QTreeWidget fill"_s, fill}};
    return result;
}

} // namespace bench
