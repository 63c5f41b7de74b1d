// new, demo and import: the commands that make a catalogue.
#include "apps/mklart/Command.h"
#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
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

} // namespace

int runNew(const Invocation& call) {
    createCatalogue(call.argument(0));
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
    demo.create(call.argument(0));
    printLine(text(TextId::ToolCreated, {call.argument(0)}));
    return Success;
}

int runImport(const Invocation& call) {
    const QString source = call.argument(0);
    const QString target = call.argument(1).isEmpty() ? defaultTarget(source) : call.argument(1);
    ProgressLine progress;
    ImportOptions options;
    options.progress = [&](const QString& table, qint64 rows, qint64 expected) {
        progress.show(table, rows, expected);
        return true;
    };
    const ImportReport report = importCatalogue(source, target, options);
    qint64 total = 0;
    for (const auto& [table, rows] : report.rows) {
        printLine(u"%1 %2"_s.arg(rows, 10).arg(table));
        total += rows;
    }
    printPassedOver(report.passedOverTables);
    printPassedOver(report.passedOverColumns);
    printLine(text(TextId::ToolImported, {QString::number(total), target}));
    return Success;
}

} // namespace mkl
