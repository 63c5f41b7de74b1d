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
constexpr quint32 listPage = 2; ///< head of the table of all objects
constexpr quint32 pageOfId = 0x00FFFFFF;
constexpr Long kindOfType = 0x7F;
constexpr quint32 systemFlags = 0x80000002;

} // namespace

MdbFile::MdbFile(const QString& path)
    : path_(path)
    , size_(checkedSize(path)) {
    handle_.reset(mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS));
    if (!handle_) refuse(refusal::ForeignFile, TextId::ImportForeignFile, {path});
    checkEnd();
    readList();
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

void MdbFile::refuseList() const {
    refuse(refusal::Damaged, TextId::ImportDamaged, {path_, text(TextId::ImportNoCatalogue)});
}

// Not mdb_read_catalog: it also takes the properties of all objects apart, where damage can keep it busy for ever.
void MdbFile::readList() {
    MdbTable list(*handle_, listPage);
    if (!list.isReadable()) refuseList();
    const QStringList columns = list.columnNames();
    const auto column = [&](const QString& name, Variant::Type type) {
        const auto index = static_cast<int>(columns.indexOf(name));
        if (index < 0 || !list.fits(index, type)) refuseList();
        return index;
    };
    const int id = column(u"Id"_s, Variant::Type::Int), type = column(u"Type"_s, Variant::Type::Int);
    const int flags = column(u"Flags"_s, Variant::Type::Int), name = column(u"Name"_s, Variant::Type::Text);
    for (qint64 rows = 0; rows < list.declaredRows() && list.fetch(); ++rows) {
        const auto valueOf = [&](int index, Variant::Type valueType) {
            const auto value = list.isRowSound() ? list.value(index, valueType) : std::nullopt;
            if (!value) refuseList();
            return *value;
        };
        const Variant object = valueOf(name, Variant::Type::Text), kind = valueOf(type, Variant::Type::Int);
        const Variant place = valueOf(id, Variant::Type::Int), marks = valueOf(flags, Variant::Type::Int);
        if (object.isNull() || kind.isNull() || place.isNull()) continue;
        addObject(object.toText(), place.toLong(), kind.toLong(), marks.isNull() ? 0 : marks.toLong());
    }
}

void MdbFile::addObject(const QString& name, Long id, Long type, Long flags) {
    if ((type & kindOfType) == MDB_LINKED_TABLE) linkedTables_.append(name);
    if ((type & kindOfType) != MDB_TABLE || (static_cast<quint32>(flags) & systemFlags) != 0) return;
    tableNames_.append(name);
    tablePages_.append(static_cast<quint32>(id) & pageOfId);
}

MdbTable MdbFile::openTable(qsizetype index) const {
    return MdbTable(*handle_, tablePages_[index]);
}

} // namespace mkl
