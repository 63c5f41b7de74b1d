#include "Facts.h"

#include "base/DateTime.h"
#include "catalogue/CatalogueTables.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>
#include <QSet>
#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

using Row = QList<Variant>;
using Rows = QList<Row>;

Rows readTable(dao::Database& database, const QString& table) {
    const CatalogueTable& known = catalogueTables()[catalogueTableIndex(table)];
    const auto records = database.OpenRecordset(table, dao::dbOpenSnapshot);
    Rows rows;
    for (; !records->Eof(); records->MoveNext()) {
        Row row;
        for (const CatalogueColumn& column : known.columns)
            row.append(records->ordinal(column.name) < 0 ? Variant() : records->value(column.name));
        rows.append(row);
    }
    return rows;
}

QJsonObject countsPer(const QMap<QString, int>& counts) {
    QJsonObject object;
    for (auto i = counts.begin(); i != counts.end(); ++i)
        object.insert(i.key(), i.value());
    return object;
}

QJsonArray arrayOf(const auto& values) {
    QJsonArray array;
    for (const auto& value : values)
        array.append(value);
    return array;
}

QString keyText(const Variant& value) {
    return value.isNull() ? u"None"_s : value.toText();
}

int doubledIn(const QList<Long>& positions) {
    return positions.size() != qsizetype(std::set<Long>(positions.begin(), positions.end()).size());
}

bool isDense(QList<Long> positions) {
    std::ranges::sort(positions);
    for (int i = 0; i < positions.size(); ++i)
        if (positions[i] != i + 1) return false;
    return true;
}

// Column positions in catalogueTables().
namespace article {
enum { Key, Name, OwnNumber, Active, Sender, Changed };
}
namespace category {
enum { Key, Sender, Name, Title, Changed, Parent, Order, Active };
}
namespace assignment {
enum { Id, Article, Category, Order, Changed };
}
namespace list {
enum { Key, Group, Name, Currency, Offer, ValidFrom };
}
namespace price {
enum { List, Article, Quantity, Amount };
}

QJsonObject nextKeys(const Rows& categories) {
    QJsonObject next;
    for (int digit = 0; digit < 10; ++digit) {
        Long highest = 0;
        for (const Row& row : categories)
            if (row[category::Key].toLong() % 10 == digit) highest = std::max(highest, row[category::Key].toLong());
        next.insert(QString::number(digit), (highest / 10 + 1) * 10 + digit);
    }
    return next;
}

struct Forest {
    QMap<Long, QList<Row>> children; ///< by parent, in order
    QList<Row> roots;
    QMap<Long, int> depth; ///< of the reachable ones
    QMap<Long, Row> byKey;
};

void descend(Forest& forest, const QList<Row>& level, int depth) {
    for (const Row& row : level) {
        forest.depth.insert(row[category::Key].toLong(), depth);
        descend(forest, forest.children.value(row[category::Key].toLong()), depth + 1);
    }
}

Forest forestOf(const Rows& categories) {
    Forest forest;
    for (const Row& row : categories) {
        forest.byKey.insert(row[category::Key].toLong(), row);
        if (row[category::Parent].isNull())
            forest.roots.append(row);
        else
            forest.children[row[category::Parent].toLong()].append(row);
    }
    const auto byOrder = [](const Row& row) { return row[category::Order].toLong(); };
    std::ranges::sort(forest.roots, {}, byOrder);
    for (auto& group : forest.children)
        std::ranges::sort(group, {}, byOrder);
    descend(forest, forest.roots, 1);
    return forest;
}

QJsonObject siblingFacts(const Forest& forest) {
    QList<QList<Row>> groups = forest.children.values();
    groups.append(forest.roots);
    int doubled = 0, loose = 0;
    qsizetype largest = 0;
    for (const auto& group : groups) {
        QList<Long> positions;
        for (const Row& row : group)
            positions.append(row[category::Order].toLong());
        doubled += doubledIn(positions);
        loose += !isDense(positions);
        largest = std::max(largest, group.size());
    }
    return {{u"sibling_groups_with_duplicate_order"_s, doubled},
            {u"sibling_groups_not_1_to_n"_s, loose},
            {u"largest_sibling_group"_s, int(largest)}};
}

void merge(QJsonObject& into, const QJsonObject& from) {
    for (auto i = from.begin(); i != from.end(); ++i)
        into.insert(i.key(), i.value());
}

QJsonObject categoryFacts(const Rows& categories) {
    const Forest forest = forestOf(categories);
    QMap<QString, int> perDepth, perSender;
    int active = 0, nullName = 0, emptyName = 0, differs = 0, leaves = 0, dangling = 0;
    qsizetype longest = 0;
    for (const int depth : forest.depth)
        ++perDepth[QString::number(depth)];
    for (const Row& row : categories) {
        ++perSender[keyText(row[category::Sender])];
        active += row[category::Active].toBoolean();
        nullName += row[category::Name].isNull();
        emptyName += !row[category::Name].isNull() && row[category::Name].toText().isEmpty();
        if (!row[category::Name].isNull()) longest = std::max(longest, row[category::Name].toText().toUcs4().size());
        leaves += !forest.children.contains(row[category::Key].toLong());
        if (row[category::Parent].isNull()) continue;
        const auto parent = forest.byKey.constFind(row[category::Parent].toLong());
        dangling += parent == forest.byKey.constEnd();
        differs += parent != forest.byKey.constEnd() && (*parent)[category::Sender] != row[category::Sender];
    }
    QList<Long> rootKeys;
    for (const Row& row : forest.roots)
        rootKeys.append(row[category::Key].toLong());
    QJsonObject facts{{u"roots"_s, int(forest.roots.size())},
                      {u"root_keys_by_order"_s, arrayOf(rootKeys)},
                      {u"max_depth"_s, int(perDepth.size())},
                      {u"per_depth"_s, countsPer(perDepth)},
                      {u"reachable"_s, int(forest.depth.size())},
                      {u"unreachable"_s, int(categories.size() - forest.depth.size())},
                      {u"dangling_parent"_s, dangling},
                      {u"in_cycle"_s, QJsonArray()},
                      {u"max_key"_s, forest.byKey.lastKey()},
                      {u"min_key"_s, forest.byKey.firstKey()},
                      {u"next_key_by_replica"_s, nextKeys(categories)},
                      {u"active"_s, active},
                      {u"null_name"_s, nullName},
                      {u"empty_name"_s, emptyName},
                      {u"longest_name"_s, int(longest)},
                      {u"sender_differs_from_parent"_s, differs},
                      {u"per_sender"_s, countsPer(perSender)},
                      {u"leaves"_s, leaves}};
    merge(facts, siblingFacts(forest));
    return facts;
}

bool isBeyondLatin1(const QString& text) {
    return std::ranges::any_of(text, [](QChar c) { return c.unicode() > 0xFF; });
}

QJsonObject articleFacts(const Rows& articles) {
    QMap<QString, int> perSender;
    QSet<QString> names;
    QStringList changed;
    QList<Long> keys;
    int active = 0, nullNumber = 0, emptyNumber = 0, nullSender = 0, nullName = 0, emptyName = 0, beyond = 0;
    qsizetype longest = 0;
    qint64 sum = 0;
    for (const Row& row : articles) {
        keys.append(row[article::Key].toLong());
        sum += keys.last();
        ++perSender[keyText(row[article::Sender])];
        nullSender += row[article::Sender].isNull();
        active += row[article::Active].toBoolean();
        nullNumber += row[article::OwnNumber].isNull();
        emptyNumber += !row[article::OwnNumber].isNull() && row[article::OwnNumber].toText().isEmpty();
        nullName += row[article::Name].isNull();
        const QString name = row[article::Name].isNull() ? QString() : row[article::Name].toText();
        emptyName += !row[article::Name].isNull() && name.isEmpty();
        names.insert(name);
        beyond += isBeyondLatin1(name);
        longest = std::max(longest, name.toUcs4().size());
        if (!row[article::Changed].isNull()) changed.append(isoFromDate(row[article::Changed].toDate()));
    }
    const Long highest = *std::ranges::max_element(keys);
    return {{u"max_key"_s, highest},
            {u"min_key"_s, *std::ranges::min_element(keys)},
            {u"number_pattern_zeros"_s, int(QString::number(highest).size()) + 1},
            {u"active"_s, active},
            {u"null_name"_s, nullName},
            {u"empty_name"_s, emptyName},
            {u"null_own_number"_s, nullNumber},
            {u"empty_own_number"_s, emptyNumber},
            {u"null_sender"_s, nullSender},
            {u"null_changed"_s, int(articles.size() - changed.size())},
            {u"longest_name"_s, int(longest)},
            {u"names_beyond_latin1"_s, beyond},
            {u"distinct_names"_s, int(names.size())},
            {u"per_sender"_s, countsPer(perSender)},
            {u"key_sum"_s, sum},
            {u"changed_min"_s, *std::ranges::min_element(changed)},
            {u"changed_max"_s, *std::ranges::max_element(changed)}};
}

QSet<Long> keysOf(const Rows& rows) {
    QSet<Long> keys;
    for (const Row& row : rows)
        keys.insert(row[0].toLong());
    return keys;
}

QJsonObject positionFacts(const QMap<Long, QList<Long>>& positions) {
    int doubled = 0, loose = 0;
    auto largest = positions.begin();
    for (auto i = positions.begin(); i != positions.end(); ++i) {
        doubled += doubledIn(*i);
        loose += !isDense(*i);
        if (i->size() > largest->size()) largest = i;
    }
    return {{u"categories_used"_s, int(positions.size())},
            {u"categories_with_duplicate_position"_s, doubled},
            {u"categories_with_positions_not_1_to_n"_s, loose},
            {u"largest_category"_s, QJsonObject{{u"key"_s, largest.key()}, {u"articles"_s, int(largest->size())}}}};
}

QJsonObject assignmentFacts(const Rows& assignments, const Rows& articles, const Rows& categories) {
    QMap<Long, QList<Long>> positions;
    QMap<Long, QSet<Long>> categoriesOf;
    std::set<std::pair<Long, Long>> pairs;
    const QSet<Long> articleKeys = keysOf(articles), categoryKeys = keysOf(categories), ids = keysOf(assignments);
    Long highestOrder = 0;
    qint64 sum = 0;
    int withoutArticle = 0, withoutCategory = 0;
    for (const Row& row : assignments) {
        const Long item = row[assignment::Article].toLong(), holder = row[assignment::Category].toLong();
        positions[holder].append(row[assignment::Order].toLong());
        categoriesOf[item].insert(holder);
        pairs.insert({item, holder});
        highestOrder = std::max(highestOrder, row[assignment::Order].toLong());
        sum += row[assignment::Id].toLong();
        withoutArticle += !articleKeys.contains(item);
        withoutCategory += !categoryKeys.contains(holder);
    }
    const auto several = std::ranges::count_if(categoriesOf, [](const auto& held) { return held.size() > 1; });
    QJsonObject facts{{u"max_id"_s, *std::ranges::max_element(ids)},
                      {u"min_id"_s, *std::ranges::min_element(ids)},
                      {u"max_order"_s, highestOrder},
                      {u"articles_in_more_than_one_category"_s, int(several)},
                      {u"same_pair_twice"_s, int(assignments.size()) - int(pairs.size())},
                      {u"id_sum"_s, sum},
                      {u"articles_unassigned"_s, int(articleKeys.size() - categoriesOf.size())},
                      {u"rows_with_missing_article"_s, withoutArticle},
                      {u"rows_with_missing_category"_s, withoutCategory},
                      {u"categories_without_articles"_s, int(categoryKeys.size() - positions.size())}};
    merge(facts, positionFacts(positions));
    return facts;
}

QJsonObject priceFacts(const Rows& lists, const Rows& prices) {
    std::set<QString> currencies;
    std::set<double> quantities;
    std::set<Long> priced, unpriced;
    qint64 sum = 0;
    int nullPrices = 0, ofMissingList = 0, nullValidFrom = 0, offers = 0;
    const QSet<Long> listKeys = keysOf(lists);
    for (const Row& row : prices) {
        priced.insert(row[price::List].toLong());
        ofMissingList += !listKeys.contains(row[price::List].toLong());
        quantities.insert(row[price::Quantity].toDouble());
        if (row[price::Amount].isNull())
            ++nullPrices;
        else
            sum += row[price::Amount].toCurrency();
    }
    for (const Row& row : lists) {
        currencies.insert(row[list::Currency].toText());
        nullValidFrom += row[list::ValidFrom].isNull();
        offers += !row[list::Offer].isNull();
        if (!priced.contains(row[list::Key].toLong())) unpriced.insert(row[list::Key].toLong());
    }
    QStringList quantityTexts;
    for (const double quantity : quantities)
        quantityTexts.append(numberText(quantity));
    return {{u"lists_null_validfrom"_s, nullValidFrom},
            {u"lists_with_special_offer"_s, offers},
            {u"lists_without_price"_s, arrayOf(unpriced)},
            {u"currencies"_s, arrayOf(currencies)},
            {u"price_sum"_s, u"%1.%2"_s.arg(sum / 10000).arg(sum % 10000, 4, 10, QChar(u'0'))},
            {u"null_prices"_s, nullPrices},
            {u"distinct_quantities"_s, arrayOf(quantityTexts)},
            {u"prices_of_missing_list"_s, ofMissingList}};
}

} // namespace

QJsonObject factsOf(dao::Database& database) {
    QMap<QString, Rows> tables;
    QJsonObject counts;
    for (const CatalogueTable& table : catalogueTables()) {
        tables[table.name] = readTable(database, table.name);
        counts.insert(table.name, int(tables[table.name].size()));
    }
    const Rows &articles = tables[u"ARTIKEL"_s], &categories = tables[u"ARTIKEL/KATEGORIEN"_s];
    return {{u"rows"_s, counts},
            {u"categories"_s, categoryFacts(categories)},
            {u"articles"_s, articleFacts(articles)},
            {u"assignments"_s, assignmentFacts(tables[u"ARTKAT"_s], articles, categories)},
            {u"prices"_s, priceFacts(tables[u"ARTIKEL/PREISLISTEN"_s], tables[u"ARTIKEL/PREISE"_s])}};
}

QJsonObject readFacts(const QString& file) {
    QFile json(file);
    return json.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(json.readAll()).object() : QJsonObject();
}

void expectSameFacts(const QJsonObject& actual, const QJsonObject& expected) {
    const auto textOf = [](const QJsonValue& value) {
        return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).toStdString();
    };
    ASSERT_FALSE(expected.isEmpty());
    EXPECT_EQ(actual.keys(), expected.keys());
    for (const QString& section : expected.keys()) {
        const QJsonObject have = actual[section].toObject(), want = expected[section].toObject();
        EXPECT_EQ(have.keys(), want.keys()) << section.toStdString();
        for (const QString& fact : want.keys())
            EXPECT_EQ(textOf(have[fact]), textOf(want[fact])) << section.toStdString() << ": " << fact.toStdString();
    }
}

} // namespace mkl
