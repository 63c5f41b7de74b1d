// new, demo, import and copy: the commands that make a catalogue.
#include "apps/mklart/CatalogueReader.h"
#include "apps/mklart/Command.h"
#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "apps/mklart/ServerAccess.h"
#include "catalogue/CatalogueCopy.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/CatalogueImport.h"
#include "catalogue/DemoCatalogue.h"
#include "catalogue/VisibleText.h"

#include <QDir>
#include <QFileInfo>
#include <limits>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long most = 10'000'000;

QString defaultTarget(const QString& source) {
    const QFileInfo info(QDir::cleanPath(QFileInfo(source).absoluteFilePath()));
    return info.path() + u'/' + (info.isDir() ? info.fileName() : info.completeBaseName()) + u".sqlite"_s;
}

void printPassedOver(const QStringList& names) {
    for (const QString& name : names)
        complain(text(TextId::ToolImportPassedOver, {visibleText(name)}));
}

/// Shown as long as it lives.
struct ShownProgress {
    ProgressLine line;
    ImportOptions options;

    explicit ShownProgress(const QString& target) {
        options.target = accessTo(target);
        options.progress = [this](const QString& table, qint64 rows, qint64 expected) {
            line.show(table, rows, expected);
            return true;
        };
    }
    Q_DISABLE_COPY_MOVE(ShownProgress)
};

void printReport(const ImportReport& report, const QString& target, TextId lastLine) {
    qint64 total = 0;
    for (const auto& [table, rows] : report.rows) {
        printLine(u"%1 %2"_s.arg(rows, 10).arg(table));
        total += rows;
    }
    printPassedOver(report.passedOverTables);
    printPassedOver(report.passedOverColumns);
    printLine(text(lastLine, {QString::number(total), target}));
}

/// Whoever goes on working in the copy alone wants the digit of the original.
void warnOfDigits(const dao::Database& source, const dao::Database& target) {
    const Long own = target.LocalNumber(), former = source.LocalNumber();
    if (own != former) complain(text(TextId::ToolCopyDigit, {QString::number(own), QString::number(former)}));
}

} // namespace

int runNew(const Invocation& call) {
    createCatalogue(call.argument(0), accessTo(call.argument(0)));
    printLine(text(TextId::ToolCreated, {call.argument(0)}));
    return Success;
}

int runDemo(const Invocation& call) {
    ProgressLine progress;
    DemoCatalogue demo;
    demo.articles = call.number(u"articles"_s, demo.articles, 0, most);
    demo.categories = call.number(u"categories"_s, demo.categories, 0, most);
    demo.seed = static_cast<quint32>(call.number(u"seed"_s, 1, 0, std::numeric_limits<Long>::max()));
    demo.progress = [&](qint64 rows, qint64 expected) {
        progress.show(call.argument(0), rows, expected);
        return true;
    };
    demo.target = accessTo(call.argument(0));
    demo.create(call.argument(0));
    printLine(text(TextId::ToolCreated, {call.argument(0)}));
    return Success;
}

int runImport(const Invocation& call) {
    const QString source = call.argument(0);
    const QString target = call.argument(1).isEmpty() ? defaultTarget(source) : call.argument(1);
    const ShownProgress shown(target);
    printReport(importCatalogue(source, target, shown.options), target, TextId::ToolImported);
    return Success;
}

int runCopy(const Invocation& call) {
    // Nobody who works on a server waits for a copy of it.
    CatalogueReader source(call.argument(0), {.readOnly = dao::DBEngine::isServer(call.argument(0))});
    const ShownProgress shown(call.argument(1));
    const ImportReport report = copyCatalogue(source.workspace(), source.database(), call.argument(1), shown.options);
    printReport(report, call.argument(1), TextId::ToolCopied);
    warnOfDigits(source.database(), CatalogueReader(call.argument(1)).database());
    return Success;
}

} // namespace mkl
