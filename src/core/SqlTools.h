#pragma once
#include <QString>

namespace mkl {

/// Builds and completes statements of the dialect. Clauses are found by tokens, never by text search: a WHERE inside
/// a text, a bracketed name or a subselect is none of the statement's. Every result is a complete statement.
class SqlTools {
public:
    /// The statement with Criteria as a condition, beside the one that it brought itself:
    ///     WHERE (own condition) AND (True AND (Criteria))
    /// or, without an own one,
    ///     WHERE (True AND (Criteria))
    /// A "(True AND (…))" in this place is what an earlier call inserted, and is replaced. Empty Criteria leave the
    /// statement as it is. A trailing ";" stays. Criteria that are not one complete expression raise the dialect's
    /// syntax error (3075), so they cannot change the structure of the statement. A UNION raises 3219.
    QString InsertCriteria(const QString& Template, const QString& Criteria) const;

    /// A select of all columns of a table, whose name is put in brackets if needed. Empty Criteria and OrderBy leave
    /// their clause out. OrderBy: column names or expressions separated by commas, each with ASC or DESC if wanted.
    /// Wrong Criteria fail at the latest when the statement is run.
    QString BuildSelect(const QString& Table, const QString& Criteria, const QString& OrderBy,
                        bool Distinct = false) const;

    /// The statement with OrderClause ("ORDER BY …") in place of its own one. An empty OrderClause leaves the
    /// statement as it is. A trailing ";" stays.
    QString InsertOrderBy(const QString& Statement, const QString& OrderClause) const;
};

} // namespace mkl
