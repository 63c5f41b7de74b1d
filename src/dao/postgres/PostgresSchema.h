#pragma once
#include "dao/Connection.h"
#include "dao/postgres/PostgresSession.h"

#include <QHash>
#include <QSet>
#include <vector>

namespace dao {

/// The tables of the schema "public". An index "TABLE:NAME" is seen as NAME.
class PostgresSchema final : public jet::Schema {
public:
    const jet::Table* findTable(QStringView name) const override;
    QStringList tableNames() const;
    const std::vector<jet::Table>& tables() const { return tables_; }

    /// Whether a column of the server holds values of any kind, by the server's numbers.
    bool isUntyped(Oid table, int column) const { return untyped_.contains({table, column}); }
    /// The type of such columns.
    Oid untypedDomain() const { return untypedDomain_; }

    /// Reads everything anew.
    void read(PostgresSession& session);
    /// Differs after each change of a table.
    static QByteArray stamp(PostgresSession& session);

    /// Column that tells apart the rows of a table without a primary key; it is hidden.
    static constexpr const char* rowIdentityColumn = "mkl_rowid";

private:
    std::vector<jet::Table> tables_; ///< in the order in which they were made
    QHash<QString, size_t> byName_;  ///< folded
    QSet<std::pair<Oid, int>> untyped_;
    Oid untypedDomain_ = 0;
};

} // namespace dao
