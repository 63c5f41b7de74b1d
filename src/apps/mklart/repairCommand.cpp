// repair: mends what check finds.
#include "apps/mklart/CatalogueReader.h"
#include "apps/mklart/Command.h"
#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "catalogue/CatalogueRepair.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

using Kind = RepairChange::Kind;

struct KindRow {
    Kind kind;
    QLatin1StringView name; ///< in JSON
    TextId line;
    bool ofCategory = false; ///< not of an assignment
};

const KindRow& rowOf(Kind kind) {
    static constexpr KindRow rows[] = {
        {Kind::ParentMissing, "parentMissing"_L1, TextId::ToolRepairParentMissing, true},
        {Kind::RingOpened, "ringOpened"_L1, TextId::ToolRepairRingOpened, true},
        {Kind::CategoryMissing, "categoryMissing"_L1, TextId::ToolRepairCategoryMissing},
        {Kind::PairDoubled, "pairDoubled"_L1, TextId::ToolRepairPairDoubled},
        {Kind::ArticleMissing, "articleMissing"_L1, TextId::ToolRepairArticleMissing},
        {Kind::CategoryPosition, "categoryPosition"_L1, TextId::ToolRepairCategoryPosition, true},
        {Kind::ArticlePosition, "articlePosition"_L1, TextId::ToolRepairArticlePosition},
    };
    return rows[static_cast<int>(kind)];
}

QString valueText(const Variant& value) {
    return value.isNull() ? u"Null"_s : value.toText();
}

QString lineOf(const RepairChange& change) {
    const QString key = QString::number(change.key), article = valueText(change.article),
                  owner = valueText(change.owner), former = valueText(change.formerPosition),
                  position = valueText(change.position);
    const TextId line = rowOf(change.kind).line;
    switch (change.kind) {
    case Kind::ParentMissing:
    case Kind::RingOpened: return text(line, {key, owner, former, position});
    case Kind::CategoryPosition:
        return text(line, {key, change.owner.isNull() ? text(TextId::ToolRoots) : owner, former, position});
    case Kind::ArticlePosition: return text(line, {key, article, owner, former, position});
    default: return text(line, {key, article, owner, former});
    }
}

QString lastLine(const RepairReport& report, bool dryRun) {
    const QString rows = QString::number(report.changes.size());
    if (report.changes.isEmpty()) return text(TextId::ToolRepairNothing);
    if (dryRun) return text(TextId::ToolRepairPlanned, {rows});
    return text(report.remaining.isDamaged() ? TextId::ToolRepairStored : TextId::ToolRepairDone, {rows});
}

void printText(const RepairReport& report, const RepairOptions& options) {
    for (const RepairChange& change : report.changes)
        printLine(lineOf(change));
    QStringList kept;
    for (const CatalogueCheck::Orphan& orphan : report.remaining.missingArticles)
        kept.append(QString::number(orphan.key));
    if (!kept.isEmpty() && !options.deleteWithoutArticle) printLine(text(TextId::ToolRepairKept, {kept.join(u", "_s)}));
    printLine(lastLine(report, options.dryRun));
}

QJsonValue jsonOf(const Variant& value) {
    return value.isNull() ? QJsonValue() : QJsonValue(value.toLong());
}

QString asJson(const RepairReport& report, const RepairOptions& options) {
    QJsonArray changes, kept;
    for (const RepairChange& change : report.changes) {
        const bool ofCategory = rowOf(change.kind).ofCategory;
        QJsonObject object{{u"change"_s, QString(rowOf(change.kind).name)},
                           {u"key"_s, change.key},
                           {ofCategory ? u"parent"_s : u"category"_s, jsonOf(change.owner)},
                           {u"formerPosition"_s, jsonOf(change.formerPosition)},
                           {u"position"_s, jsonOf(change.position)}};
        if (!ofCategory) object.insert(u"article"_s, jsonOf(change.article));
        changes.append(object);
    }
    for (const CatalogueCheck::Orphan& orphan : report.remaining.missingArticles)
        if (!options.deleteWithoutArticle) kept.append(orphan.key);
    const QJsonObject object{{u"stored"_s, !options.dryRun},
                             {u"damaged"_s, report.remaining.isDamaged()},
                             {u"changes"_s, changes},
                             {u"keptWithoutArticle"_s, kept}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace

int runRepair(const Invocation& call) {
    const RepairOptions options{call.has(u"dense"_s), call.has(u"delete-without-article"_s), call.has(u"dry-run"_s)};
    CatalogueReader reader(call.argument(0));
    const RepairReport report = repairCatalogue(reader.workspace(), reader.database(), options);
    if (call.has(u"json"_s))
        printLine(asJson(report, options));
    else
        printText(report, options);
    return report.remaining.isDamaged() ? Failure : Success;
}

} // namespace mkl
