#pragma once
#include "base/Ref.h"
#include "dao/Constants.h"
#include "dao/Recordset.h"
#include "dao/RowWriter.h"
#include "dao/TableDefinition.h"

#include <QString>
#include <memory>

namespace jet {
class Schema;
}

namespace dao {

class Connection;
class PlanCache;

/// An open catalogue. Closing it closes its record sets; using it afterwards is error 3420.
class Database final : public mkl::RefCounted {
public:
    Database(QString name, std::shared_ptr<Connection> connection);
    ~Database() override;

    /// The name it was opened under.
    QString Name() const;
    /// Whether anything in it may be changed: not for a file or server that may only be read, nor for a user of a
    /// server without a right to write, as of the opening.
    bool Updatable() const;

    /// source is a table name (bare, blanks and slashes allowed) or a SELECT; type one of dbOpen…, 0 for the
    /// default (table for a table name, otherwise dynaset). 3078 unknown table, 3251 for a type that the source
    /// does not offer, 3219 for an action query; otherwise the errors of the dialect.
    mkl::Ref<Recordset> OpenRecordset(const QString& source, Long type = 0);
    /// Runs an action query. options: 0 or dbFailOnError.
    void Execute(const QString& sql, Long options = 0);
    Long RecordsAffected() const; ///< of the last Execute; 0 where it failed

    /// How long this database waits for another program's lock; 5 for a negative time.
    void setBusyTimeout(Long milliseconds);
    Long BusyTimeout() const;

    /// A number that belongs to this one database: no row of a table, so nothing that carries rows to another database
    /// takes it along. 0 in a new one; other programs see it as they see rows.
    Long LocalNumber() const;
    /// Within a transaction it is undone with it. 3027 for a read-only database, 3246 in a doomed transaction, 3260
    /// while another program writes.
    void setLocalNumber(Long number);

    /// Whether somebody else has stored something since the opening, or since the last call that said so: another
    /// program, or another Database of this one. Neither waits nor raises, and costs no more than a look: what cannot
    /// be told just now, or not within a transaction, the next call tells. False for a closed database.
    bool takeChangedByOthers();
    /// Whether the server is known to be out of reach; every statement tries anew to reach it. Never for a file.
    bool isLost() const;
    /// Whether what goes to the server and comes from it is encrypted. Never for a file.
    bool isEncrypted() const;

    /// Names of the user's tables in the order of the file.
    QStringList tableNames() const;
    /// As of the last statement; the tables it gives hold until the next one.
    const jet::Schema& schema() const;

    /// Runs statements in the engine's own language, untranslated: tables and settings of a new file.
    void executeNative(const QString& statements);
    /// The rows of a query in the engine's own language, that many texts in each; Null is an empty one.
    QList<QStringList> queryNative(const QString& query, int columns = 1);
    /// Makes a table without its indexes, for filling it first. 3010 where there is one of that name.
    void createTable(const TableDefinition& table);
    /// Makes the indexes of such a table; 3022 where its rows are in the way.
    void createIndexes(const TableDefinition& table);
    void createDeletionRule(const DeletionRule& rule);
    /// For filling the table with many rows. 3078 unknown table, 3127 unknown column.
    RowWriter appendRows(const QString& table, const QStringList& columns);

    void Close();
    bool isOpen() const;

    /// Translations at hand, for tests and figures.
    const PlanCache& planCache() const;

private:
    friend class Walk;
    const std::shared_ptr<PlanCache>& sharedPlans() const;

    struct Data;
    std::unique_ptr<Data> d_;
};

} // namespace dao
