#include "support/CheckFindings.h"

#include "dao/Workspace.h"

#include <QStringList>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

QString listed(const QList<Long>& keys) {
    QStringList texts;
    for (const Long key : keys)
        texts.append(QString::number(key));
    return texts.join(u'+');
}

QString named(const Variant& key) {
    return key.isNull() ? u"Null"_s : key.toText();
}

} // namespace

QSet<QString> findingsOf(const CatalogueCheck& check) {
    QSet<QString> findings;
    const auto orphans = [&](const QString& kind, const QList<CatalogueCheck::Orphan>& found) {
        for (const auto& [key, missing] : found)
            findings.insert(u"%1 %2 lacks %3"_s.arg(kind).arg(key).arg(named(missing)));
    };
    const auto doubled = [&](const QString& kind, const QList<CatalogueCheck::DoubledPosition>& found) {
        for (const auto& [owner, position, keys] : found)
            findings.insert(u"%1 of %2 at %3: %4"_s.arg(kind, named(owner), named(position), listed(keys)));
    };
    orphans(u"parent"_s, check.danglingParents);
    for (const QList<Long>& ring : check.rings)
        findings.insert(u"ring "_s + listed(ring));
    if (check.unreachableCategories > 0) findings.insert(u"unreachable %1"_s.arg(check.unreachableCategories));
    doubled(u"siblings"_s, check.siblingPositions);
    doubled(u"articles"_s, check.articlePositions);
    for (const auto& [article, category, keys] : check.pairs)
        findings.insert(u"pair %1 in %2: %3"_s.arg(article).arg(category).arg(listed(keys)));
    orphans(u"category"_s, check.missingCategories);
    orphans(u"article"_s, check.missingArticles);
    for (const Variant& parent : check.siblingGaps)
        findings.insert(u"gap below "_s + named(parent));
    for (const Long category : check.articleGaps)
        findings.insert(u"gap in %1"_s.arg(category));
    return findings;
}

QSet<QString> findingsOf(const QString& file) {
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(file, {.readOnly = true, .busyTimeoutMilliseconds = 0});
    return findingsOf(CatalogueCheck::of(*database));
}

} // namespace mkl
