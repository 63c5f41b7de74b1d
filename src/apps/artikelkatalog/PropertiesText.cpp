#include "apps/artikelkatalog/PropertiesText.h"

#include "base/Texts.h"

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr int mostCategories = 15;

Ref<dao::Recordset> rowsOf(dao::Database& catalogue, const QString& query, Long key) {
    return catalogue.OpenRecordset(query.arg(key), dao::dbOpenSnapshot);
}

QString textOf(const dao::Recordset& row, const QString& column) {
    const Variant value = row.value(column);
    return value.isNull() ? QString() : value.toText();
}

QString stateOf(const dao::Recordset& row) {
    const Variant active = row.value(u"Aktiv");
    const bool isActive = !active.isNull() && active.toBoolean();
    return text(isActive ? TextId::ProgramStateActive : TextId::ProgramStateInactive);
}

QString countOf(dao::Database& catalogue, const QString& query, Long key) {
    return rowsOf(catalogue, query, key)->value(0).toText();
}

QString categoriesOf(dao::Database& catalogue, Long article) {
    const auto rows = rowsOf(catalogue,
                             u"SELECT k.Kategoriename AS Kategorie, a.[Order] AS Pos FROM ARTKAT AS a INNER JOIN "
                             "[ARTIKEL/KATEGORIEN] AS k ON a.[Kategorie-Schlüssel]=k.[Kategorie-Schlüssel] "
                             "WHERE a.[Artikel-Schlüssel]=%1 ORDER BY k.Kategoriename, k.[Kategorie-Schlüssel]"_s,
                             article);
    if (rows->Eof()) return text(TextId::ProgramInNoCategory);
    QStringList lines;
    for (; !rows->Eof() && lines.size() < mostCategories; rows->MoveNext())
        lines.append(text(TextId::ProgramInCategory, {textOf(*rows, u"Kategorie"_s), textOf(*rows, u"Pos"_s)}));
    if (!rows->Eof()) lines.append(u"…"_s);
    return lines.join(u'\n');
}

QString articleText(dao::Database& catalogue, Long article) {
    const auto row = rowsOf(catalogue, u"SELECT * FROM ARTIKEL WHERE [Artikel-Schlüssel]=%1"_s, article);
    if (row->Eof()) return {};
    return text(TextId::ProgramArticleProperties, {QString::number(article), textOf(*row, u"Artikelname"_s),
                                                   stateOf(*row), categoriesOf(catalogue, article)});
}

QString categoryText(dao::Database& catalogue, Long category) {
    const auto row =
        rowsOf(catalogue, u"SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=%1"_s, category);
    if (row->Eof()) return {};
    return text(TextId::ProgramCategoryProperties,
                {QString::number(category), textOf(*row, u"Kategoriename"_s), textOf(*row, u"Bezeichnung"_s),
                 stateOf(*row),
                 countOf(catalogue, u"SELECT Count(*) FROM [ARTIKEL/KATEGORIEN] WHERE [Parent]=%1"_s, category),
                 countOf(catalogue, u"SELECT Count(*) FROM ARTKAT WHERE [Kategorie-Schlüssel]=%1"_s, category)});
}

} // namespace

QString propertiesText(dao::Database& catalogue, Long key, acbPanes pane) {
    return pane == acbPaneCategoryTree ? categoryText(catalogue, key) : articleText(catalogue, key);
}

} // namespace mkl
