#pragma once
#include "dao/Database.h"

namespace mkl {

/// The reference schema in a database: making it and testing for it.
class CatalogueSchema {
public:
    /// Makes all tables, indexes and triggers in an empty database.
    static void create(dao::Database& database);

    /// The two halves of create(), for whoever fills many rows: indexes are made faster after the rows.
    static void createTables(dao::Database& database);
    static void createIndexes(dao::Database& database);

    /// Raises 3011 with a text that names the first table or column that is missing; 3421 for
    /// a column whose type can never hold what belongs there.
    static void verify(dao::Database& database);

    /// True if there is a table by the name of one of them.
    static bool hasTables(dao::Database& database);

    /// True if no table of the catalogue holds a row.
    static bool isEmpty(dao::Database& database);
};

} // namespace mkl
