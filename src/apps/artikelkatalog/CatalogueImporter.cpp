#include "apps/artikelkatalog/CatalogueImporter.h"

#include "apps/artikelkatalog/Failure.h"
#include "base/EventPump.h"
#include "base/Texts.h"
#include "catalogue/CatalogueImport.h"
#include "controls/Asker.h"
#include "controls/FormRunner.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QProgressDialog>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr Long Cancelled = 3059;

bool agrees(const QString& question) {
    return asker().ask({.text = question, .flags = vbYesNo + vbQuestion}) == vbYes;
}

QString fileName(const QString& path) {
    return QFileInfo(path).fileName();
}

/// Progress over all tables is unknown beforehand; the bar runs once per table.
class ImportProgress {
public:
    ImportProgress(QWidget& window, const QString& source)
        : dialog_(text(TextId::ProgramImportProgress, {fileName(source)}), text(TextId::ProgramCancel), 0, 0, &window) {
        dialog_.setObjectName(u"ImportProgress"_s);
        dialog_.setWindowModality(Qt::WindowModal);
        dialog_.setMinimumDuration(500);
        dialog_.setAutoReset(false);
    }

    /// False once the user cancelled.
    bool show(const QString& table, qint64 rows, qint64 expected) {
        dialog_.setLabelText(text(TextId::ProgramImportProgress, {table}));
        dialog_.setMaximum(int(qMax<qint64>(expected, 0)));
        dialog_.setValue(int(rows));
        doEvents();
        return !dialog_.wasCanceled();
    }

private:
    QProgressDialog dialog_;
};

void showReport(const ImportReport& report, const QString& target) {
    qint64 rows = 0;
    QStringList lines;
    for (const ImportReport::TableRows& table : report.rows) {
        rows += table.rows;
        lines += u"%1: %2"_s.arg(table.table, QLocale().toString(table.rows));
    }
    const QStringList passedOver = report.passedOverTables + report.passedOverColumns;
    if (!passedOver.isEmpty()) lines += text(TextId::ProgramImportPassedOver, {passedOver.join(u", "_s)});
    asker().ask({.text = text(TextId::ProgramImportDone, {fileName(target), QLocale().toString(rows)}),
                 .flags = vbInformation,
                 .detail = lines.join(u'\n')});
}

} // namespace

std::optional<QString> CatalogueImporter::catalogueOf(const QString& source) const {
    const std::optional<QString> target = targetFor(source);
    if (!target) return {};
    const bool isThere = QFileInfo::exists(*target) || import(source, *target);
    return isThere ? target : std::nullopt;
}

std::optional<QString> CatalogueImporter::targetFor(const QString& source) const {
    const QFileInfo info(source);
    const QString beside = info.dir().filePath(info.completeBaseName() + u".sqlite"_s);
    if (QFileInfo::exists(beside)) {
        if (agrees(text(TextId::ProgramExistingCatalogue, {fileName(beside)}))) return beside;
    } else if (agrees(text(TextId::ProgramImportQuestion, {info.fileName(), fileName(beside)}))) {
        return beside;
    }
    return {};
}

bool CatalogueImporter::import(const QString& source, const QString& target) const {
    ImportReport report;
    const auto run = [&] {
        ImportProgress progress(window_, source);
        ImportOptions options;
        options.progress = [&progress](const QString& table, qint64 rows, qint64 expected) {
            return progress.show(table, rows, expected);
        };
        report = importCatalogue(source, target, options);
    };
    const auto tell = [&source] {
        if (currentError().Number() != Cancelled) showFailure(text(TextId::ProgramNotImported, {fileName(source)}));
    };
    if (!succeeds(run, tell)) return false;
    showReport(report, target);
    return true;
}

} // namespace mkl
