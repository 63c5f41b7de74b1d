#pragma once
#include "dao/Connection.h"
#include "dao/sqlite/SqliteSession.h"

#include <QHash>
#include <vector>

namespace dao {

/// The tables of a file. An index "TABLE:NAME" is seen as NAME.
class SqliteSchema final : public jet::Schema {
public:
    const jet::Table* findTable(QStringView name) const override;
    QStringList tableNames() const;

    /// Reads everything anew.
    void read(Connection& connection, const SqliteSession& session);

private:
    std::vector<jet::Table> tables_; ///< in the order of the file
    QHash<QString, size_t> byName_;  ///< folded
};

} // namespace dao
