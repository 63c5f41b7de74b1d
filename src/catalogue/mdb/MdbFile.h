#pragma once
#include "catalogue/mdb/MdbTable.h"

#include <QString>
#include <memory>

namespace mkl {

/// An open .mdb or .accdb file.
class MdbFile {
public:
    /// Refuses what is no such file (3343) or visibly not whole (3049).
    explicit MdbFile(const QString& path);

    /// The user's tables; 3049 where the list cannot be read. The entries live as long as the file.
    QList<MdbCatalogEntry*> tables() const;
    /// Tables that stand in another file.
    QStringList linkedTables() const;
    qint64 pages() const;

    static QString nameOf(const MdbCatalogEntry& entry);

private:
    struct HandleDeleter {
        void operator()(MdbHandle* handle) const { mdb_close(handle); }
    };

    static qint64 checkedSize(const QString& path);
    void checkEnd() const;
    void readCatalog();

    QString path_;
    qint64 size_ = 0;
    std::unique_ptr<MdbHandle, HandleDeleter> handle_;
};

} // namespace mkl
