#include "catalogue/CatalogueTree.h"

#include "catalogue/CategoryForest.h"
#include "catalogue/VisibleText.h"

#include <QHash>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

/// "1 A, 2 B" for each category that holds articles.
QHash<Long, QString> articleTexts(dao::Database& database) {
    QHash<Long, QString> texts;
    const auto rows = database.OpenRecordset(
        u"SELECT ARTKAT.[Kategorie-Schlüssel], ARTKAT.[Artikel-Schlüssel], ARTIKEL.[Artikelname] "
        "FROM ARTKAT LEFT JOIN ARTIKEL ON ARTKAT.[Artikel-Schlüssel] = ARTIKEL.[Artikel-Schlüssel] "
        "ORDER BY ARTKAT.[Kategorie-Schlüssel], ARTKAT.[Order], ARTKAT.[ArtKatID]"_s,
        dao::dbOpenForwardOnly);
    for (; !rows->Eof(); rows->MoveNext()) {
        const Variant category = rows->value(0), article = rows->value(1), name = rows->value(2);
        if (category.isNull() || article.isNull()) continue;
        QString& text = texts[category.toLong()];
        if (!text.isEmpty()) text += u", "_s;
        text += article.toText() + u' ' + (name.isNull() ? QString() : visibleText(name.toText()));
    }
    rows->Close();
    return texts;
}

QList<int> startOf(const CategoryForest& forest, const Variant& root) {
    if (root.isNull()) return forest.roots();
    const int category = forest.find(root.toLong());
    if (category < 0) throwError(3021);
    return {category};
}

} // namespace

qint64 CatalogueTree::write(dao::Database& database, const std::function<void(const QString& line)>& line) const {
    const CategoryForest forest(database);
    const auto texts = articles ? articleTexts(database) : QHash<Long, QString>();
    const auto steps = forest.walk(startOf(forest, root));
    for (const auto& step : steps) {
        if (levels > 0 && step.level > levels) continue;
        const Category& category = forest.categories()[step.category];
        QString text(2 * (step.level - 1), u' ');
        text += QString::number(category.key) + u' ' + visibleText(category.name);
        if (const QString held = texts.value(category.key); !held.isEmpty()) text += u": "_s + held;
        line(text);
    }
    return root.isNull() ? forest.categories().size() - steps.size() : 0;
}

} // namespace mkl
