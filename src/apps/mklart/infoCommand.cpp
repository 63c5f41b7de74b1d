#include "apps/mklart/CatalogueReader.h"
#include "apps/mklart/Command.h"
#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "catalogue/CatalogueInfo.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

QString keyText(const Variant& key) {
    return key.isNull() ? text(TextId::ToolNull) : key.toText();
}

QJsonValue jsonOf(const Variant& key) {
    return key.isNull() ? QJsonValue() : QJsonValue(key.toLong());
}

template<class Numbers>
QString joined(const Numbers& numbers) {
    QStringList texts;
    for (const auto number : numbers)
        texts.append(QString::number(number));
    return texts.isEmpty() ? text(TextId::ToolNull) : texts.join(u", "_s);
}

template<class Numbers>
QJsonArray arrayOf(const Numbers& numbers) {
    QJsonArray array;
    for (const auto number : numbers)
        array.append(number);
    return array;
}

QString asJson(const CatalogueInfo& info) {
    QJsonObject rows;
    for (const auto& [table, count] : info.rows)
        rows.insert(table, count);
    const QJsonObject object{
        {u"file"_s, info.file},
        {u"bytes"_s, info.fileBytes > 0 ? QJsonValue(info.fileBytes) : QJsonValue()},
        {u"updatable"_s, info.updatable},
        {u"replicaDigit"_s, jsonOf(info.replicaDigit)},
        {u"rows"_s, rows},
        {u"roots"_s, arrayOf(info.roots)},
        {u"categoriesPerLevel"_s, arrayOf(info.categoriesPerLevel)},
        {u"unreachableCategories"_s, info.unreachableCategories},
        {u"leaves"_s, info.leaves},
        {u"largestSiblingGroup"_s, info.largestSiblingGroup},
        {u"activeCategories"_s, info.activeCategories},
        {u"activeArticles"_s, info.activeArticles},
        {u"highestCategoryKey"_s, jsonOf(info.highestCategoryKey)},
        {u"highestArticleKey"_s, jsonOf(info.highestArticleKey)},
        {u"highestAssignmentKey"_s, jsonOf(info.highestAssignmentKey)},
    };
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void printText(const CatalogueInfo& info) {
    const QString file =
        info.fileBytes > 0 ? text(TextId::ToolInfoBytes, {info.file, QString::number(info.fileBytes)}) : info.file;
    printLine(info.updatable ? file : text(TextId::ToolInfoReadOnly, {file}));
    for (const auto& [table, count] : info.rows)
        printLine(u"%1 %2"_s.arg(count, 10).arg(table));
    printLine(text(TextId::ToolInfoRoots, {joined(info.roots)}));
    printLine(text(TextId::ToolInfoLevels, {joined(info.categoriesPerLevel)}));
    printLine(text(TextId::ToolInfoLeaves, {QString::number(info.leaves), QString::number(info.largestSiblingGroup)}));
    printLine(text(TextId::ToolInfoUnreachable, {QString::number(info.unreachableCategories)}));
    printLine(
        text(TextId::ToolInfoActive, {QString::number(info.activeArticles), QString::number(info.activeCategories)}));
    printLine(text(TextId::ToolInfoHighest, {keyText(info.highestArticleKey), keyText(info.highestCategoryKey),
                                             keyText(info.highestAssignmentKey)}));
    printLine(text(TextId::ToolInfoReplicaDigit, {keyText(info.replicaDigit)}));
}

} // namespace

int runInfo(const Invocation& call) {
    CatalogueReader reader(call.argument(0));
    const CatalogueInfo info = CatalogueInfo::of(reader.database());
    if (call.has(u"json"_s))
        printLine(asJson(info));
    else
        printText(info);
    return Success;
}

} // namespace mkl
