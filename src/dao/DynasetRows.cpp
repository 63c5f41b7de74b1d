#include "dao/DynasetRows.h"

#include "dao/Errors.h"

#include <algorithm>

namespace dao {

DynasetRows::DynasetRows(const QuerySource& source, jet::Shape shape, std::shared_ptr<DynasetTranslation> translation)
    : source_(source)
    , shape_(std::move(shape))
    , translation_(std::move(translation))
    , rowLiterals_(literals(plan().row)) {
    readKeys(keys_);
    firstAdded_ = keys_.size();
}

DynasetRows::DynasetRows(const DynasetRows& parent, const QList<qsizetype>& rows)
    : source_(parent.source_)
    , shape_(parent.shape_)
    , translation_(parent.translation_)
    , rowLiterals_(parent.rowLiterals_) {
    for (const qsizetype row : rows)
        appendKeys(parent.keysOf(row));
    firstAdded_ = keys_.size();
}

bool DynasetRows::isDeleted(qsizetype row) const {
    return std::ranges::binary_search(deleted_, row);
}

qsizetype DynasetRows::deletedBefore(qsizetype row) const {
    return std::ranges::lower_bound(deleted_, row) - deleted_.begin();
}

// A row is gone when a table that must be there has it no more. Where an outer join found nothing there is nothing to
// lose.
bool DynasetRows::read(qsizetype row, RowStore& into) const {
    Parameters parameters = rowLiterals_;
    for (int ordinal = 0; ordinal < plan().keyTypes.size(); ++ordinal)
        parameters.append(keyPart(row, ordinal));
    into.clear();
    translation_->row->read(parameters, into);
    if (into.isEmpty()) return false;
    const int firstKey = columns()->count();
    return std::ranges::all_of(plan().sources, [&](const jet::DynasetSource& source) {
        return source.optional || into.value(0, firstKey + source.keyOrdinals.first()).kind != StoredValue::Kind::Null;
    });
}

RowKey DynasetRows::key(qsizetype row, int source) const {
    RowKey result;
    for (const int ordinal : plan().sources[source].keyOrdinals)
        result.append(owned(keyPart(row, ordinal)));
    return result;
}

bool DynasetRows::isAbsent(qsizetype row, int source) const {
    return keyPart(row, plan().sources[source].keyOrdinals.first()).kind == StoredValue::Kind::Null;
}

StoredValue DynasetRows::keyPart(qsizetype row, int ordinal) const {
    if (!changedKeys_.isEmpty())
        if (const auto changed = changedKeys_.constFind(row); changed != changedKeys_.cend())
            return (*changed)[ordinal];
    return keys_.value(row, ordinal);
}

void DynasetRows::setKey(qsizetype row, int source, const RowKey& key) {
    QList<StoredValue> keys;
    for (const StoredValue& part : keysOf(row))
        keys.append(owned(part));
    const QList<int>& ordinals = plan().sources[source].keyOrdinals;
    QList<StoredValue> changed = keys;
    for (qsizetype part = 0; part < ordinals.size(); ++part)
        changed[ordinals[part]] = key[part];
    if (changed != keys) changedKeys_.insert(row, changed);
}

void DynasetRows::markDeleted(qsizetype row) {
    deleted_.insert(std::ranges::lower_bound(deleted_, row), row);
}

// The keys that the joins find for the new row come from the statement itself; a row that it does not select has none.
qsizetype DynasetRows::append(const RowKey& key) {
    QList<StoredValue> keys(plan().keyTypes.size());
    const QList<int>& ordinals = plan().sources[plan().deleteSource].keyOrdinals;
    for (qsizetype part = 0; part < ordinals.size(); ++part)
        keys[ordinals[part]] = key[part];
    RowStore selected;
    if (plan().sources.size() > 1) readKeys(selected);
    for (qsizetype row = selected.size() - 1; row >= 0; --row) {
        const bool isNew =
            std::ranges::all_of(ordinals, [&](int ordinal) { return selected.value(row, ordinal) == keys[ordinal]; });
        if (!isNew) continue;
        for (int ordinal = 0; ordinal < keys.size(); ++ordinal)
            keys[ordinal] = owned(selected.value(row, ordinal));
        break;
    }
    appendKeys(keys);
    return keys_.size() - 1;
}

Parameters DynasetRows::literals(const jet::NativeStatement& statement) const {
    return parameterValues(statement.parameters, shape_);
}

void DynasetRows::readKeys(RowStore& keys) const {
    translation_->keys->read(literals(plan().keys), keys);
}

void DynasetRows::appendKeys(const QList<StoredValue>& keys) {
    for (const StoredValue& key : keys)
        keys_.append(key);
    keys_.endRow();
}

QList<StoredValue> DynasetRows::keysOf(qsizetype row) const {
    QList<StoredValue> keys;
    for (int ordinal = 0; ordinal < plan().keyTypes.size(); ++ordinal)
        keys.append(keyPart(row, ordinal));
    return keys;
}

CopiedRows copyOf(const DynasetRows& rows) {
    CopiedRows copied{std::make_shared<RowStore>(), {}};
    const int columns = rows.columns()->count();
    RowStore row;
    for (qsizetype number = 0; number < rows.count(); ++number) {
        if (rows.isDeleted(number) || !rows.read(number, row)) continue;
        for (int column = 0; column < columns; ++column)
            copied.values->append(row.value(0, column));
        copied.values->endRow();
        copied.numbers.append(number);
    }
    return copied;
}

} // namespace dao
