#pragma once
// What the binder must know of a database. The engines answer it.
#include <QList>
#include <QString>

namespace jet {

enum class ColumnType : quint8 { Unknown, Boolean, Int, Double, Currency, Date, Text, Binary };

struct Column {
    QString name; ///< as declared
    ColumnType type = ColumnType::Unknown;
    bool autoNumber = false;
    bool required = false;
    bool computed = false; ///< out of other columns
    int size = 0; ///< of a text: characters; of a whole number: 1 (0 to 255) or 2 bytes; 0 where the type alone counts
};

struct Index {
    QString name; ///< as programs name it, for example "PrimaryKey"
    QList<int> columns;
    bool unique = false;
    bool primary = false;
};

struct Table {
    QString name; ///< as declared
    QList<Column> columns;
    QList<Index> indexes;
    QList<int> primaryKey; ///< columns that identify a row; empty where the engine's own row identity serves

    int columnIndex(QStringView columnName) const; ///< -1 if there is none; case is folded beyond ASCII
    const Index* index(QStringView indexName) const;
};

/// Looks tables up without regard to case, beyond ASCII too.
class Schema {
public:
    virtual ~Schema() = default;
    virtual const Table* findTable(QStringView name) const = 0;
};

/// The form under which names compare equal.
QString foldName(QStringView name);
bool sameName(QStringView a, QStringView b);

} // namespace jet
