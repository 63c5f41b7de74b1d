// Reading from a server: 1,000,000 articles and a forest of 100,000 categories, beside the server's own client
// interface that reads the same rows.
#include "bench/Articles.h"
#include "bench/OpenCatalogue.h"
#include "bench/Row.h"
#include "bench/ServerConnection.h"
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
constexpr const char* rawName = "rows";

std::vector<Article> readByName(dao::Database& database) {
    std::vector<Article> articles;
    const auto rows = database.OpenRecordset(
        u"SELECT * FROM ARTIKEL WHERE [Absender-Schlüssel] Like '*' ORDER BY [Artikel-Schlüssel]"_s,
        dao::dbOpenSnapshot);
    for (; !rows->Eof(); rows->MoveNext())
        articles.push_back({rows->value(u"Artikel-Schlüssel").toLong(), rows->value(u"Artikelname").toText(),
                            rows->value(u"Aktiv").toBoolean()});
    return articles;
}

/// The rows of a prepared statement by the server's own interface, some columns of them.
template<class Row>
std::vector<Row> readRaw(const ServerConnection& raw, std::initializer_list<const char*> columns,
                         Row (*rowOf)(const PGresult& rows, int row, const std::vector<int>& columns)) {
    const RawResult rows = raw.run(rawName);
    std::vector<int> numbers;
    for (const char* column : columns)
        numbers.push_back(columnOf(*rows, column));
    std::vector<Row> read;
    for (int row = 0; row < PQntuples(rows.get()); ++row)
        read.push_back(rowOf(*rows, row, numbers));
    return read;
}

Article articleOf(const PGresult& rows, int row, const std::vector<int>& columns) {
    return {integerAt(rows, row, columns[0]), textAt(rows, row, columns[1]), integerAt(rows, row, columns[2]) != 0};
}

/// A catalogue with rows and a connection beside it that has prepared how to read them.
struct FilledCatalogue {
    FilledCatalogue(const QString& rows, const char* native)
        : connection(catalogue.name()) {
        connection.exec(rows.toUtf8());
        catalogue.settle();
        connection.prepare(rawName, native);
    }

    OpenCatalogue catalogue{Engine::Server};
    ServerConnection connection;
};

Result resultOf(const QString& work, double goal, double ours, const std::vector<Baseline>& baselines) {
    return {work, u"s"_s, ours, baselines, goal, {}};
}

} // namespace

Result serverPoolRow() {
    const FilledCatalogue server(
        u"INSERT INTO \"ARTIKEL\" SELECT n, 'Sechskantschraube M' || n % 97 || ' x ' || n, 'A-' || n, "
        "-(n % 7 <> 0)::int, 1, '2026-11-21 12:00:00' FROM generate_series(1, %1) n"_s.arg(Articles),
        "SELECT * FROM \"ARTIKEL\" WHERE \"Absender-Schlüssel\" IS NOT NULL ORDER BY \"Artikel-Schlüssel\"");
    std::vector<Article> ours, raw;
    std::vector<double> ourTimes, rawTimes;
    for (int run = 0; run < Runs; ++run) {
        ourTimes.push_back(medianSeconds(1, [&] { ours = readByName(*server.catalogue.database); }));
        rawTimes.push_back(medianSeconds(1, [&] {
            raw = readRaw(server.connection, {"Artikel-Schlüssel", "Artikelname", "Aktiv"}, &articleOf);
        }));
    }
    const bool same = ours.size() == raw.size() && ours.back().key == raw.back().key &&
                      ours.front().name == raw.front().name && ours.size() == std::size_t(Articles);
    if (!same) qFatal("the rows differ");
    return resultOf(u"snapshot of the pool on a server, 1,000,000 articles, 3 fields by name"_s, 1.6, median(ourTimes),
                    {{u"libpq in binary"_s, median(rawTimes)}});
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

ServerNode nodeOf(const PGresult& rows, int row, const std::vector<int>& columns) {
    const int parent = PQgetisnull(&rows, row, columns[1]) ? 0 : integerAt(rows, row, columns[1]);
    return {integerAt(rows, row, columns[0]), parent,
            nodeText(integerAt(rows, row, columns[2]), textAt(rows, row, columns[3]))};
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
    const FilledCatalogue server(
        u"INSERT INTO \"ARTIKEL/KATEGORIEN\" SELECT n * 10, 1, 'Kategorie ' || n, 'Kategorie', "
        "'2026-11-21 12:00:00', nullif((n - 1) / 10, 0) * 10, (n - 1) % 10 + 1, -1 FROM generate_series(1, %1) n"_s.arg(
            Categories),
        "SELECT * FROM \"ARTIKEL/KATEGORIEN\" ORDER BY \"Kategorie-Schlüssel\"");
    dao::Database& database = *server.catalogue.database;
    std::vector<ServerNode> walked, whole;
    std::vector<double> ours, reads, fills;
    for (int run = 0; run < Runs; ++run) {
        ours.push_back(medianSeconds(1, [&] {
            walked.clear();
            const dao::Walk readAhead(database);
            walk(database, 0, u"[Parent] Is Null"_s, walked);
            fillWidget(walked);
        }));
        reads.push_back(medianSeconds(1, [&] {
            whole = readRaw(server.connection, {"Kategorie-Schlüssel", "Parent", "Order", "Kategoriename"}, &nodeOf);
        }));
        fills.push_back(medianSeconds(1, [&] { fillWidget(whole); }));
    }
    if (walked.size() != std::size_t(Categories) || whole.size() != walked.size()) qFatal("the tree is incomplete");
    return resultOf(u"walk through 100,000 categories on a server, a statement for each, with a QTreeWidget"_s, 3,
                    median(ours), {{u"whole table by libpq"_s, median(reads)}, {u"QTreeWidget fill"_s, median(fills)}});
}

} // namespace bench
