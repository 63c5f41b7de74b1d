#include "catalogue/mdb/MdbFile.h"

#include "catalogue/Refusal.h"

#include <QFile>
#include <QtEndian>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 pageSizeUntil97 = 2048, pageSize = 4096;
constexpr qsizetype versionOffset = 0x14;
constexpr int newestVersion = MDB_VER_ACCDB_2019;

} // namespace

MdbFile::MdbFile(const QString& path)
    : path_(path)
    , size_(checkedSize(path)) {
    handle_.reset(mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS));
    if (!handle_) refuse(refusal::ForeignFile, TextId::ImportForeignFile, {path});
    checkEnd();
    readCatalog();
}

qint64 MdbFile::checkedSize(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throwError(3051, {path}, file.errorString());
    const qint64 size = file.size();
    if (size == 0) refuse(refusal::ForeignFile, TextId::ImportEmptyFile, {path});
    const QByteArray head = file.read(versionOffset + 1);
    const bool known = head.startsWith(QByteArrayView("\0\1\0\0Standard Jet DB", 19)) ||
                       head.startsWith(QByteArrayView("\0\1\0\0Standard ACE DB", 19));
    if (!known || head.size() <= versionOffset || head[versionOffset] > newestVersion)
        refuse(refusal::ForeignFile, TextId::ImportForeignFile, {path});
    if (size % (head[versionOffset] == MDB_VER_JET3 ? pageSizeUntil97 : pageSize) != 0)
        refuse(refusal::Damaged, TextId::ImportTruncated, {path});
    return size;
}

qint64 MdbFile::pages() const {
    return size_ / handle_->fmt->pg_size;
}

/// The first row of page 1 maps the free pages of the file. Pages behind its end are all free; one in use is missing.
void MdbFile::checkEnd() const {
    MdbHandle* mdb = handle_.get();
    int start = 0;
    size_t length = 0;
    if (mdb_read_pg(mdb, 1) != mdb->fmt->pg_size || mdb_find_row(mdb, 0, &start, &length) != 0)
        refuse(refusal::Damaged, TextId::ImportTruncated, {path_});
    const QByteArray map(reinterpret_cast<const char*>(mdb->pg_buf) + (start & 0x1fff), qsizetype(length));
    constexpr char inlineMap = 0;
    constexpr qsizetype bitsFrom = 5;
    if (map.size() <= bitsFrom || map[0] != inlineMap) return; // a map in pages of its own serves very large files
    const qint64 first = qFromLittleEndian<quint32>(map.constData() + 1);
    const qint64 end = first + (map.size() - bitsFrom) * 8;
    for (qint64 page = std::max(first, pages()); page < end; ++page)
        if (!(map[bitsFrom + (page - first) / 8] >> ((page - first) % 8) & 1))
            refuse(refusal::Damaged, TextId::ImportTruncated, {path_});
}

void MdbFile::readCatalog() {
    if (!mdb_read_catalog(handle_.get(), MDB_ANY))
        refuse(refusal::Damaged, TextId::ImportDamaged, {path_, text(TextId::ImportNoCatalogue)});
}

QList<MdbCatalogEntry*> MdbFile::tables() const {
    QList<MdbCatalogEntry*> entries;
    for (guint i = 0; i < handle_->catalog->len; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(handle_->catalog, i));
        if (mdb_is_user_table(entry)) entries.append(entry);
    }
    return entries;
}

QStringList MdbFile::linkedTables() const {
    QStringList names;
    for (guint i = 0; i < handle_->catalog->len; ++i) {
        const auto* entry = static_cast<const MdbCatalogEntry*>(g_ptr_array_index(handle_->catalog, i));
        if (entry->object_type == MDB_LINKED_TABLE) names.append(nameOf(*entry));
    }
    return names;
}

QString MdbFile::nameOf(const MdbCatalogEntry& entry) {
    return QString::fromUtf8(entry.object_name);
}

} // namespace mkl
