// mklart import of a large .mdb beside fetching all its columns into nothing.
#include "bench/Row.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <glib.h>
#include <stdexcept>
// glib.h must stand before mdbtools.h, which includes it inside extern "C".
#include <mdbtools.h>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Runs = 3;

QString sourceFile() {
    const QString folder = qEnvironmentVariable("MKL_DATA", QStringLiteral(MKL_SOURCE_DIR "/../shared/data"));
    return QDir::cleanPath(folder + u"/more/catalogue-200000.mdb"_s);
}

void fetchTable(MdbCatalogEntry* entry) {
    MdbTableDef* table = mdb_read_table(entry);
    if (!table) throw std::runtime_error("table not readable");
    mdb_read_columns(table);
    std::vector<std::vector<char>> buffers(table->num_cols);
    std::vector<int> lengths(table->num_cols);
    for (unsigned column = 0; column < table->num_cols; ++column) {
        buffers[column].resize(entry->mdb->bind_size);
        mdb_bind_column(table, int(column) + 1, buffers[column].data(), &lengths[column]);
    }
    mdb_rewind_table(table);
    while (mdb_fetch_row(table)) {
    }
    mdb_free_tabledef(table);
}

void fetchAll(const QString& file) {
    MdbHandle* mdb = mdb_open(file.toLocal8Bit().constData(), MDB_NOFLAGS);
    if (!mdb || !mdb_read_catalog(mdb, MDB_TABLE)) throw std::runtime_error("file not readable");
    for (guint entry = 0; entry < mdb->catalog->len; ++entry) {
        auto* found = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb->catalog, entry));
        if (found->object_type == MDB_TABLE && mdb_is_user_table(found)) fetchTable(found);
    }
    mdb_close(mdb);
}

void import(const QString& source) {
    const QTemporaryDir folder;
    QProcess mklart;
    mklart.start(QStringLiteral(MKL_BIN_DIR "/mklart"), {u"import"_s, source, folder.filePath(u"target.sqlite"_s)});
    if (!mklart.waitForFinished(-1) || mklart.exitCode() != 0)
        throw std::runtime_error(mklart.readAllStandardError().toStdString());
}

} // namespace

Result importRow() {
    Result result;
    result.work = u"mklart import, .mdb with 200,000 articles and 260,000 assignments"_s;
    result.unit = u"s"_s;
    result.goal = 3;
    const QString source = sourceFile();
    if (!QFileInfo::exists(source)) {
        result.skipped = u"there is no catalogue-200000.mdb; MKL_DATA names the folder above more/"_s;
        return result;
    }
    result.ours = medianSeconds(Runs, [&] { import(source); });
    result.baselines = {{u"libmdb fetching all columns"_s, medianSeconds(Runs, [&] { fetchAll(source); })}};
    return result;
}

} // namespace bench
