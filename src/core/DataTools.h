#pragma once
#include "base/Variant.h"
#include "dao/Database.h"

namespace mkl {

/// Single questions to the catalogue. Errors are those of the data layer; an empty Backend is 91.
class DataTools {
public:
    /// Number of rows of a table that meet Criteria; empty Criteria count all.
    Long CountRows(const Ref<dao::Database>& Backend, const QString& Table, const QString& Criteria) const;

    /// Looks for the row whose KeyColumn holds Key and gives its WantedColumn as Answer. False if there is no such
    /// row; Answer then stays as it was.
    bool LookupField(const Ref<dao::Database>& Backend, const QString& Table, const QString& KeyColumn, Long Key,
                     Variant& Answer, const QString& WantedColumn) const;
};

} // namespace mkl
