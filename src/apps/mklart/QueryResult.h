#pragma once
#include "base/Ref.h"
#include "dao/Recordset.h"

#include <QStringList>
#include <optional>
#include <vector>

namespace mkl {

/// Rows to be shown: all of a snapshot, or some. The rows themselves lie in the snapshot alone.
class QueryResult {
public:
    /// All rows. What fails on reading them fails here.
    explicit QueryResult(Ref<dao::Recordset> rows);
    /// Those that FindFirst and FindNext visit.
    QueryResult(Ref<dao::Recordset> rows, const QString& criterion);

    QStringList columnNames() const;

    /// Calls visit(const dao::Recordset&) with each row in turn as the current one.
    template<class Visit>
    void forEachRow(Visit&& visit) const;

private:
    bool begin() const;
    void goTo(Long position) const;

    Ref<dao::Recordset> rows_;
    std::optional<std::vector<Long>> positions_; ///< of the rows found
};

template<class Visit>
void QueryResult::forEachRow(Visit&& visit) const {
    if (!begin()) return;
    if (positions_) {
        for (const Long position : *positions_) {
            goTo(position);
            visit(*rows_);
        }
        return;
    }
    for (; !rows_->Eof(); rows_->MoveNext())
        visit(*rows_);
}

} // namespace mkl
