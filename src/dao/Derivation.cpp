#include "dao/Derivation.h"

#include "dao/Errors.h"
#include "dao/ForwardOnlyCursor.h"
#include "dao/SnapshotCursor.h"
#include "dao/StoredRowReader.h"

namespace dao {

QList<qsizetype> chosenRows(const Derivation& derivation, const Columns& columns, jet::RowReader& reader,
                            QList<qsizetype> rows) {
    const auto order = jet::SortOrder::parse(derivation.sort, columns.list());
    if (!derivation.filter.trimmed().isEmpty()) {
        const auto criterion = jet::Criterion::parse(derivation.filter, columns.list());
        rows.removeIf([&](qsizetype row) {
            reader.moveTo(row);
            return !criterion.holds(reader);
        });
    }
    order.sort(rows, reader);
    return rows;
}

std::shared_ptr<SnapshotRows> derivedRows(SnapshotRows& parent, const Derivation& derivation) {
    parent.read();
    QList<qsizetype> places(parent.count());
    for (qsizetype row = 0; row < places.size(); ++row)
        places[row] = parent.place(row);
    StoredRowReader reader(*parent.store(), *parent.columns());
    places = chosenRows(derivation, *parent.columns(), reader, std::move(places));
    return std::make_shared<SnapshotRows>(parent.source(), parent.columns(), parent.store(),
                                          std::vector<quint32>(places.cbegin(), places.cend()));
}

std::shared_ptr<SnapshotRows> runAgain(const QuerySource& source, const Derivations& derivations) {
    auto result = std::make_shared<SnapshotRows>(source, SnapshotRows::Reading::WhenNeeded);
    for (const Derivation& derivation : derivations)
        result = derivedRows(*result, derivation);
    return result;
}

Long derivedType(Long wanted, Long own) {
    switch (wanted) {
    case 0: return own == dbOpenTable ? dbOpenDynaset : own;
    case dbOpenSnapshot:
    case dbOpenForwardOnly: return wanted;
    case dbOpenDynaset:
        if (own == dbOpenDynaset || own == dbOpenTable) return wanted;
        mkl::throwError(err::InvalidOperation);
    case dbOpenTable: mkl::throwError(err::InvalidOperation);
    default: mkl::throwError(mkl::err::InvalidArgument);
    }
}

std::unique_ptr<Cursor> cursorOver(std::shared_ptr<SnapshotRows> rows, Long type, Derivations derivations) {
    if (type == dbOpenForwardOnly) return std::make_unique<ForwardOnlyCursor>(std::move(rows), std::move(derivations));
    return std::make_unique<SnapshotCursor>(std::move(rows), type, std::move(derivations));
}

} // namespace dao
