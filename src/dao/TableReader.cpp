#include "dao/TableReader.h"

#include "dao/Errors.h"
#include "jet/model/Target.h"

#include <algorithm>

namespace dao {

using jet::ColumnType;

TableReader::TableReader(Connection& connection, const jet::Table& table, const jet::Index* index)
    : connection_(&connection)
    , table_(connection.target().name(table.name)) {
    const jet::Target& target = connection.target();
    QByteArrayList names;
    for (const jet::Column& column : table.columns)
        names.append(target.name(column.name));
    for (const int ordinal : index ? index->columns : QList<int>()) {
        const ColumnType type = table.columns[ordinal].type;
        const bool isText = type == ColumnType::Text || type == ColumnType::Unknown;
        key_.push_back({isText ? target.collated(names[ordinal]) : names[ordinal], ordinal, type, isText});
        indexColumns_.append(table.columns[ordinal].name);
    }
    selectList_ = names.join(", ");
    addIdentity(table);
}

// Texts that the order holds for equal may belong to different rows, so the identity compares to the letter.
void TableReader::addIdentity(const jet::Table& table) {
    const jet::Target& target = connection_->target();
    for (const int ordinal : table.primaryKey)
        identity_.push_back({target.name(table.columns[ordinal].name), ordinal, table.columns[ordinal].type, false});
    if (identity_.empty()) {
        const QByteArray term = target.rowIdentity(table_);
        selectList_ += ", " + term;
        identity_.push_back({term, static_cast<int>(table.columns.size()), ColumnType::Int, false});
    }
    for (const KeyPart& part : identity_)
        if (std::ranges::find(key_, part.term, &KeyPart::term) == key_.end()) key_.push_back(part);
}

bool TableReader::readEnd(Direction from, RowStore& row) const {
    return readFirst({Probe()}, from, row);
}

bool TableReader::readBeside(Direction direction, RowStore& row) const {
    QVarLengthArray<StoredValue, 4> values;
    for (const KeyPart& part : key_)
        values.append(row.value(0, part.ordinal));
    return readFirst(probesBeside(direction, false, values), direction, row);
}

bool TableReader::readAgain(RowStore& row) const {
    Probe same;
    for (const KeyPart& part : identity_)
        compare(same, part, "=", row.value(0, part.ordinal));
    same.fixedParts = static_cast<qsizetype>(key_.size());
    return readFirst({same}, Direction::Forward, row);
}

bool TableReader::seek(QStringView comparison, std::span<const mkl::Variant> keys, RowStore& row) const {
    if (keys.empty() || keys.size() > static_cast<size_t>(indexColumns_.size()))
        mkl::throwError(mkl::err::InvalidArgument);
    QVarLengthArray<StoredValue, 4> stored;
    for (size_t part = 0; part < keys.size(); ++part)
        stored.append(encodeFor(keys[part], key_[part].type, indexColumns_[qsizetype(part)]));
    const Direction direction = comparison.startsWith(u'<') ? Direction::Backward : Direction::Forward;
    return readFirst(seekProbes(comparison, stored), direction, row);
}

qint64 TableReader::count() const {
    RowStore row;
    connection_->prepared("SELECT count(*) FROM " + table_)->read({}, row);
    return row.value(0, 0).integer;
}

void TableReader::compare(Probe& probe, const KeyPart& part, const char* comparison, const StoredValue& value) const {
    if (value.kind == StoredValue::Kind::Null) {
        probe.conditions.append(part.term + " IS NULL");
        return;
    }
    probe.values.append(value);
    const jet::Target& target = connection_->target();
    const QByteArray parameter = target.parameter(static_cast<int>(probe.values.size()), part.type);
    probe.conditions.append(part.term + ' ' + comparison + ' ' +
                            (part.collated ? target.collated(parameter) : parameter));
}

// The rows on one side of the value, nearest first. Null stands before all values, but no comparison finds it.
void TableReader::addProbes(Probes& probes, const Probe& prefix, const KeyPart& part, Direction direction, bool orEqual,
                            const StoredValue& value) const {
    const bool isNull = value.kind == StoredValue::Kind::Null;
    Probe probe = prefix;
    if (direction == Direction::Forward) {
        if (!isNull)
            compare(probe, part, orEqual ? ">=" : ">", value);
        else if (!orEqual)
            probe.conditions.append(part.term + " IS NOT NULL");
        probes.append(probe);
        return;
    }
    if (!isNull) {
        compare(probe, part, orEqual ? "<=" : "<", value);
        probes.append(probe);
    }
    if (!isNull || orEqual) {
        probe = prefix;
        compare(probe, part, "=", StoredValue());
        probes.append(probe);
    }
}

// The rows on one side of a row with these values: first those that agree in all parts but the last, nearest first.
TableReader::Probes TableReader::probesBeside(Direction direction, bool orEqual,
                                              std::span<const StoredValue> values) const {
    Probes probes;
    for (size_t part = values.size(); part-- > 0;) {
        Probe prefix;
        for (size_t fixed = 0; fixed < part; ++fixed)
            compare(prefix, key_[fixed], "=", values[fixed]);
        prefix.fixedParts = static_cast<qsizetype>(part);
        addProbes(probes, prefix, key_[part], direction, orEqual && part + 1 == values.size(), values[part]);
    }
    return probes;
}

TableReader::Probes TableReader::seekProbes(QStringView comparison, std::span<const StoredValue> keys) const {
    if (comparison == u"=") {
        Probe same;
        for (size_t part = 0; part < keys.size(); ++part)
            compare(same, key_[part], "=", keys[part]);
        return {same};
    }
    if (comparison == u">=" || comparison == u">") return probesBeside(Direction::Forward, comparison == u">=", keys);
    if (comparison == u"<=" || comparison == u"<") return probesBeside(Direction::Backward, comparison == u"<=", keys);
    mkl::throwError(mkl::err::InvalidArgument);
}

QByteArray TableReader::nativeText(const Probe& probe, Direction direction) const {
    QByteArray text = "SELECT " + selectList_ + " FROM " + table_;
    if (!probe.conditions.isEmpty()) text += " WHERE " + probe.conditions.join(" AND ");
    QByteArrayList terms;
    for (size_t part = size_t(probe.fixedParts); part < key_.size(); ++part) {
        const QByteArray& term = key_[part].term;
        const bool mayBeNull = std::ranges::find(identity_, term, &KeyPart::term) == identity_.end();
        terms.append(connection_->target().orderTerm(term, direction == Direction::Backward, mayBeNull));
    }
    if (!terms.isEmpty()) text += " ORDER BY " + terms.join(", ");
    return text + " LIMIT 1";
}

bool TableReader::readFirst(const Probes& probes, Direction direction, RowStore& row) const {
    for (const Probe& probe : probes) {
        RowStore found;
        connection_->prepared(nativeText(probe, direction))->read(probe.values, found);
        if (found.isEmpty()) continue;
        row = std::move(found);
        return true;
    }
    return false;
}

} // namespace dao
