#include "apps/mklart/QueryResult.h"

namespace mkl {

QueryResult::QueryResult(Ref<dao::Recordset> rows)
    : rows_(std::move(rows)) {
    if (!rows_->Eof()) rows_->MoveLast();
}

QueryResult::QueryResult(Ref<dao::Recordset> rows, const QString& criterion)
    : rows_(std::move(rows))
    , positions_(std::in_place) {
    for (rows_->FindFirst(criterion); !rows_->NoMatch(); rows_->FindNext(criterion))
        positions_->push_back(rows_->AbsolutePosition());
}

QStringList QueryResult::columnNames() const {
    QStringList names;
    for (Long i = 0; i < rows_->FieldCount(); ++i)
        names.append(rows_->Fields(i).Name());
    return names;
}

bool QueryResult::begin() const {
    if (rows_->RecordCount() == 0) return false;
    rows_->MoveFirst();
    return true;
}

// Forward all the way, since positions ascend.
void QueryResult::goTo(Long position) const {
    rows_->Move(position - rows_->AbsolutePosition());
}

} // namespace mkl
