#pragma once
#include "catalogue/mdb/MdbTable.h"

#include <QString>
#include <memory>

namespace mkl {

/// An open .mdb or .accdb file and the list of its tables.
class MdbFile {
public:
    /// Refuses what is no such file (3343) or visibly not whole (3049).
    explicit MdbFile(const QString& path);

    /// The user's tables, by name and place.
    const QStringList& tableNames() const { return tableNames_; }
    MdbTable openTable(qsizetype index) const;
    /// Tables that stand in another file.
    const QStringList& linkedTables() const { return linkedTables_; }
    qint64 pages() const;

private:
    struct HandleDeleter {
        void operator()(MdbHandle* handle) const { mdb_close(handle); }
    };

    static qint64 checkedSize(const QString& path);
    void checkEnd() const;
    void readList();
    void addObject(const QString& name, Long id, Long type, Long flags);
    [[noreturn]] void refuseList() const;

    QString path_;
    qint64 size_ = 0;
    std::unique_ptr<MdbHandle, HandleDeleter> handle_;
    QStringList tableNames_, linkedTables_;
    QList<quint32> tablePages_; ///< beside tableNames_
};

} // namespace mkl
