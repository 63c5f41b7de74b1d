#include "browser/ArticleRow.h"

#include "browser/NodeText.h"
#include "controls/ListItem.h"
#include "dao/Recordset.h"

#include <array>
#include <charconv>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

int columnOf(dao::Recordset& rows, QStringView name) {
    rows.Fields(name); // the error names a column that is not there
    return rows.ordinal(name);
}

} // namespace

QString articleNumber(const Variant& articleKey, const QString& pattern) {
    return zeroPadded(articleKey, pattern.size());
}

QString rowKey(const Variant& key) {
    return key.isNull() ? u"A"_s : rowKey(key.toLong());
}

QString rowKey(Long key) {
    std::array<char, 12> characters{'A'};
    const auto end = std::to_chars(characters.data() + 1, characters.data() + characters.size(), key).ptr;
    return QString::fromLatin1(characters.data(), end - characters.data());
}

Long articleOfListRow(const ListItem& row) {
    return row.SubItems(1).toInt();
}

Long positionOfListRow(const ListItem& row) {
    return row.Text().toInt();
}

QString activeIcon(const Variant& active) {
    static const QString on = u"On"_s, off = u"Off"_s; // rows of a large pool share them
    return !active.isNull() && active.toBoolean() ? on : off;
}

bool isActiveIcon(const QString& icon) {
    return icon.compare("On"_L1, Qt::CaseInsensitive) == 0;
}

ArticleRow::ArticleRow(const Ref<dao::Recordset>& rows, const QString& pattern)
    : rows_(*rows)
    , pattern_(pattern)
    , key_(columnOf(*rows, u"Artikel-Schlüssel"))
    , name_(columnOf(*rows, u"Artikelname"))
    , active_(columnOf(*rows, u"Aktiv")) {}

Variant ArticleRow::articleKey() const {
    return rows_.value(key_);
}

QString ArticleRow::number() const {
    return articleNumber(articleKey(), pattern_);
}

QString ArticleRow::name() const {
    const Variant name = rows_.value(name_);
    return name.isNull() ? QString() : name.toText();
}

QString ArticleRow::icon() const {
    return activeIcon(rows_.value(active_));
}

void ArticleRow::showInPool(ListItem& item) const {
    item.setSubItems(1, name());
    item.setSmallIcon(icon());
}

AssignedArticleRow::AssignedArticleRow(const Ref<dao::Recordset>& rows, const QString& pattern)
    : article_(rows, pattern)
    , key_(columnOf(*rows, u"ArtKatID"))
    , order_(columnOf(*rows, u"Order")) {}

Variant AssignedArticleRow::assignmentKey() const {
    return article_.rows_.value(key_);
}

QString AssignedArticleRow::position() const {
    return positionText(article_.rows_.value(order_));
}

void AssignedArticleRow::showInList(ListItem& item) const {
    item.setSubItems(1, article_.number());
    item.setSubItems(2, article_.name());
    item.setSmallIcon(article_.icon());
}

} // namespace mkl
