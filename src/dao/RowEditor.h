#pragma once
#include "dao/Connection.h"

#include <QByteArrayList>
#include <QList>
#include <memory>
#include <optional>

namespace dao {

/// What tells a row of a table apart: the values of its primary key, in the order of jet::Table::primaryKey, or the
/// engine's row identity alone. The values own their bytes.
using RowKey = QList<StoredValue>;

/// Stores single rows of one table, each by its key. Every call is done as a whole or not at all, inside a transaction
/// too. All calls that write raise 3027 in a read-only database, 3246 in a doomed transaction and 3260 where another
/// program holds the lock longer than the busy timeout.
class RowEditor {
public:
    RowEditor(std::shared_ptr<Connection> connection, const jet::Table& table);

    const jet::Table& table() const { return table_; }

    /// The values of all columns of the table in their order, behind them the row identity where the table has no
    /// primary key. False if there is no such row; the store is as before then.
    bool read(const RowKey& key, RowStore& row) const;
    /// The key of a row read so.
    RowKey keyOf(const RowStore& row, qsizetype index = 0) const;

    /// What a new row holds before the program sets anything: defaults, and the next number of a counter. The number
    /// is taken: nobody else gets it, even if the row is never stored.
    ColumnValues initialValues() const;

    /// Stores a new row and gives its key. 3022 doubled key, 3058 Null in the primary key, 3314 Null where none may be,
    /// 3317 a rule of the table.
    RowKey insert(const ColumnValues& values) const;
    /// Changes a row and gives its key, which may have been among the changes. before holds what the program saw of
    /// the row: 3197 if one of these columns has another value by now, 3167 if the row is gone; the rest as insert().
    /// Without it nothing is compared: nobody can have changed the row since. stored, if given, becomes the row as it
    /// stands now: it is read before the change is final.
    RowKey update(const RowKey& key, const ColumnValues& changes, const std::optional<ColumnValues>& before,
                  RowStore* stored = nullptr) const;
    /// 3167 if the row is gone, 3200 if rows of other tables refer to it.
    void remove(const RowKey& key) const;

private:
    /// The statement used last that stores these columns: many rows in a row are stored alike.
    struct Latest {
        QList<int> columns;
        std::shared_ptr<Statement> statement;
    };

    template<class Action>
    void atomically(Action&& action) const;
    RowKey change(const RowKey& key, const ColumnValues& changes) const;
    bool changedAtOnce(const RowKey& key, const ColumnValues& changes, const ColumnValues& before) const;
    QByteArray parameter(int number, int column) const;
    QByteArray updateText(const QList<int>& columns, bool changesKey) const;
    QByteArray insertText(const QList<int>& columns, bool tellsKey) const;
    /// The key where the values hold it as it will be stored; empty otherwise.
    RowKey givenKey(const ColumnValues& values) const;
    template<class Text>
    Statement& latest(Latest& latest, const ColumnValues& values, Text&& text) const;
    QByteArray returningKey() const;
    bool changesKey(const ColumnValues& changes) const;
    static RowKey keyFrom(Statement& statement, const QList<StoredValue>& values, qsizetype parts);
    QByteArray keyCondition(qsizetype parametersBefore) const;
    void requireKeyValues(const ColumnValues& values, bool isNew) const;
    void requireUnchanged(const RowKey& key, const ColumnValues& before) const;

    std::shared_ptr<Connection> connection_;
    jet::Table table_;
    QByteArray nativeTable_;
    QByteArrayList columnNames_; ///< native
    QByteArrayList keyNames_;    ///< native
    QList<int> declaredKey_;     ///< columns of the primary key, also where they tell no rows apart
    mutable std::shared_ptr<Statement> reader_;
    mutable std::shared_ptr<Statement> remover_;
    mutable Latest update_;
    mutable Latest updateOfSeen_; ///< a row that is as it was seen
    mutable Latest insert_;
    mutable Latest insertOfGivenKey_;
};

} // namespace dao
