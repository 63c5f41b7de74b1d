#pragma once
#include "dao/Connection.h"

#include <QByteArrayList>
#include <QVarLengthArray>
#include <vector>

namespace dao {

/// Reads single rows of a table in the order of a key, each by a short statement of its own. The key is the columns
/// of an index, if one is chosen, then what tells the rows apart.
class TableReader {
public:
    enum class Direction : quint8 { Forward, Backward };

    TableReader(Connection& connection, const jet::Table& table, const jet::Index* index);

    // Each puts the row into the store in place of what it held; without such a row the store is as before.
    // Behind the columns of the table a row may hold the engine's row identity.
    bool readEnd(Direction from, RowStore& row) const; ///< the first or the last row
    bool readBeside(Direction direction, RowStore& row) const;
    bool readAgain(RowStore& row) const;
    /// By the first columns of the index; comparison is one of the five of Seek. 5 for another one, for no key and for
    /// more keys than columns.
    bool seek(QStringView comparison, std::span<const mkl::Variant> keys, RowStore& row) const;

    qint64 count() const;

private:
    struct KeyPart {
        QByteArray term;
        int ordinal; ///< in the rows read
        jet::ColumnType type;
        bool collated = false;
    };
    /// The rows that meet the conditions; the first of them in the order of the key is wanted.
    struct Probe {
        QByteArrayList conditions;
        QVarLengthArray<StoredValue, 4> values;
        qsizetype fixedParts = 0; ///< leading parts of the key in which all these rows agree
    };
    using Probes = QVarLengthArray<Probe, 4>;

    void addIdentity(const jet::Table& table);
    void compare(Probe& probe, const KeyPart& part, const char* comparison, const StoredValue& value) const;
    void addProbes(Probes& probes, const Probe& prefix, const KeyPart& part, Direction direction, bool orEqual,
                   const StoredValue& value) const;
    Probes seekProbes(QStringView comparison, std::span<const StoredValue> keys) const;
    Probes probesBeside(Direction direction, bool orEqual, std::span<const StoredValue> values) const;
    QByteArray nativeText(const Probe& probe, Direction direction) const;
    bool readFirst(const Probes& probes, Direction direction, RowStore& row) const;

    Connection* connection_;
    QByteArray table_;
    QByteArray selectList_;
    std::vector<KeyPart> key_;      ///< in the order of the rows
    std::vector<KeyPart> identity_; ///< what tells the rows apart
    QStringList indexColumns_;
};

} // namespace dao
