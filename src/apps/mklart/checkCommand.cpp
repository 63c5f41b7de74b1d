#include "apps/mklart/CatalogueReader.h"
#include "apps/mklart/Command.h"
#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "catalogue/CatalogueCheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

QString joined(const QList<Long>& keys) {
    QStringList texts;
    for (const Long key : keys)
        texts.append(QString::number(key));
    return texts.join(u", "_s);
}

QString valueText(const Variant& value) {
    return value.isNull() ? u"Null"_s : value.toText();
}

QString parentText(const Variant& parent) {
    return parent.isNull() ? text(TextId::ToolRoots) : text(TextId::ToolCategory, {parent.toText()});
}

void printPositions(const CatalogueCheck& check) {
    for (const auto& [parent, position, keys] : check.siblingPositions)
        printLine(text(TextId::ToolCheckSiblingPosition, {parentText(parent), valueText(position), joined(keys)}));
    for (const auto& [category, position, keys] : check.articlePositions)
        printLine(text(TextId::ToolCheckArticlePosition,
                       {text(TextId::ToolCategory, {category.toText()}), valueText(position), joined(keys)}));
}

void printRemarks(const CatalogueCheck& check) {
    QStringList parents;
    for (const Variant& parent : check.siblingGaps)
        parents.append(parentText(parent));
    if (!parents.isEmpty()) printLine(text(TextId::ToolCheckSiblingGaps, {parents.join(u", "_s)}));
    if (!check.articleGaps.isEmpty()) printLine(text(TextId::ToolCheckArticleGaps, {joined(check.articleGaps)}));
}

void printText(const CatalogueCheck& check) {
    for (const auto& [key, missing] : check.danglingParents)
        printLine(text(TextId::ToolCheckDangling, {QString::number(key), valueText(missing)}));
    for (const auto& ring : check.rings)
        printLine(text(TextId::ToolCheckRing, {joined(ring)}));
    if (check.unreachableCategories > 0)
        printLine(text(TextId::ToolInfoUnreachable, {QString::number(check.unreachableCategories)}));
    printPositions(check);
    for (const auto& [article, category, keys] : check.pairs)
        printLine(text(TextId::ToolCheckPair, {QString::number(article), QString::number(category), joined(keys)}));
    for (const auto& [key, missing] : check.missingCategories)
        printLine(text(TextId::ToolCheckMissingCategory, {QString::number(key), valueText(missing)}));
    for (const auto& [key, missing] : check.missingArticles)
        printLine(text(TextId::ToolCheckMissingArticle, {QString::number(key), valueText(missing)}));
    printRemarks(check);
    if (!check.isDamaged()) printLine(text(TextId::ToolCheckSound));
}

QJsonValue jsonOf(const Variant& value) {
    return value.isNull() ? QJsonValue() : QJsonValue(value.toLong());
}

QJsonArray jsonOf(const QList<Long>& keys) {
    QJsonArray array;
    for (const Long key : keys)
        array.append(key);
    return array;
}

QJsonArray jsonOf(const QList<CatalogueCheck::Orphan>& orphans) {
    QJsonArray array;
    for (const auto& [key, missing] : orphans)
        array.append(QJsonObject{{u"key"_s, key}, {u"missing"_s, jsonOf(missing)}});
    return array;
}

QJsonArray jsonOf(const QList<CatalogueCheck::DoubledPosition>& positions, const QString& ownerName) {
    QJsonArray array;
    for (const auto& [owner, position, keys] : positions)
        array.append(
            QJsonObject{{ownerName, jsonOf(owner)}, {u"position"_s, jsonOf(position)}, {u"keys"_s, jsonOf(keys)}});
    return array;
}

QString asJson(const CatalogueCheck& check) {
    QJsonArray rings, pairs, siblingGaps;
    for (const auto& ring : check.rings)
        rings.append(jsonOf(ring));
    for (const auto& [article, category, keys] : check.pairs)
        pairs.append(QJsonObject{{u"article"_s, article}, {u"category"_s, category}, {u"keys"_s, jsonOf(keys)}});
    for (const Variant& parent : check.siblingGaps)
        siblingGaps.append(jsonOf(parent));
    const QJsonObject remarks{{u"siblingGaps"_s, siblingGaps}, {u"articleGaps"_s, jsonOf(check.articleGaps)}};
    const QJsonObject object{
        {u"damaged"_s, check.isDamaged()},
        {u"danglingParents"_s, jsonOf(check.danglingParents)},
        {u"rings"_s, rings},
        {u"unreachableCategories"_s, check.unreachableCategories},
        {u"siblingPositions"_s, jsonOf(check.siblingPositions, u"parent"_s)},
        {u"articlePositions"_s, jsonOf(check.articlePositions, u"category"_s)},
        {u"pairs"_s, pairs},
        {u"missingCategories"_s, jsonOf(check.missingCategories)},
        {u"missingArticles"_s, jsonOf(check.missingArticles)},
        {u"remarks"_s, remarks},
    };
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace

int runCheck(const Invocation& call) {
    CatalogueReader reader(call.argument(0));
    const CatalogueCheck check = CatalogueCheck::of(reader.database());
    if (call.has(u"json"_s))
        printLine(asJson(check));
    else
        printText(check);
    return check.isDamaged() ? Failure : Success;
}

} // namespace mkl
