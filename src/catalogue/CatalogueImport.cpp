#include "catalogue/CatalogueImport.h"

#include "catalogue/CatalogueFile.h"
#include "catalogue/CatalogueSchema.h"
#include "catalogue/CsvSource.h"
#include "catalogue/ImportWriter.h"
#include "catalogue/ReaderProcess.h"
#include "catalogue/Refusal.h"
#include "catalogue/WholeTransaction.h"

#include <QFileInfo>
#include <algorithm>
#include <memory>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<RowSource> openSource(const QString& source, const ImportOptions& options) {
    const QFileInfo info(source);
    if (!info.exists()) throwError(refusal::NoFile, {source});
    if (info.isDir()) return std::make_unique<CsvSource>(source);
    return std::make_unique<ReaderProcess>(source, options.silenceMilliseconds);
}

ImportReport importIntoNew(RowSource& source, const QString& target, const ImportOptions& options) {
    CatalogueDraft draft(target, options.target);
    ImportWriter writer(draft.database(), options);
    source.readInto(writer);
    draft.publish();
    return writer.report();
}

ImportReport importIntoEmpty(RowSource& source, const QString& target, const ImportOptions& options) {
    const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
    const Ref<dao::Database> database = openCatalogue(*workspace, target, options.target);
    WholeTransaction transaction(*workspace);
    if (!CatalogueSchema::isEmpty(*database))
        refuse(refusal::Exists,
               dao::DBEngine::isServer(target) ? TextId::CatalogueNotEmptyOnServer : TextId::CatalogueNotEmpty,
               {target});
    ImportWriter writer(*database, options);
    source.readInto(writer);
    transaction.commit();
    return writer.report();
}

} // namespace

ImportReport importCatalogue(const QString& source, const QString& target, const ImportOptions& options) {
    return storeRows(*openSource(source, options), target, options);
}

ImportReport storeRows(RowSource& source, const QString& target, const ImportOptions& options) {
    return catalogueExists(target, options.target) ? importIntoEmpty(source, target, options)
                                                   : importIntoNew(source, target, options);
}

bool isImportableDatabase(const QString& file) {
    const QString suffix = QFileInfo(file).suffix();
    const QStringList suffixes = {u"mdb"_s, u"accdb"_s, u"mde"_s, u"accde"_s};
    return suffixes.contains(suffix, Qt::CaseInsensitive);
}

} // namespace mkl
