#include "core/SqlTools.h"

#include "base/RunTimeError.h"
#include "core/StatementClauses.h"
#include "jet/Compiler.h"

#include <QStringBuilder>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr Long invalidOperation = 3219;

bool isWordCharacter(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}

bool startsAsName(QStringView text) {
    return !text.isEmpty() && !text.front().isDigit();
}

bool isBracketed(QStringView name) {
    return name.startsWith(u'[') && name.endsWith(u']');
}

bool isPlainName(QStringView name) {
    return startsAsName(name) && std::ranges::all_of(name, isWordCharacter) && !jet::isStrict(jet::keywordOf(name));
}

void appendBracketed(QString& sql, QStringView name) {
    sql += u'[';
    sql += name;
    sql += u']';
}

void appendTable(QString& sql, QStringView table) {
    if (isBracketed(table) || isPlainName(table))
        sql += table;
    else
        appendBracketed(sql, table);
}

// Characters of the catalogue's column names. A text with any other is an expression, or has its brackets already.
bool isColumnName(QStringView text) {
    return startsAsName(text) &&
           std::ranges::all_of(text, [](QChar c) { return isWordCharacter(c) || c == u' ' || c == u'-' || c == u'/'; });
}

// The " ASC" or " DESC" at the end of a sort term, or nothing.
QStringView directionOf(QStringView term) {
    for (const QStringView direction : {QStringView(u" DESC"), QStringView(u" ASC")})
        if (term.endsWith(direction, Qt::CaseInsensitive)) return term.last(direction.size());
    return {};
}

void appendSortTerm(QString& sql, QStringView term) {
    const QStringView direction = directionOf(term);
    const QStringView name = term.chopped(direction.size()).trimmed();
    if (!isColumnName(name)) {
        sql += term;
        return;
    }
    appendBracketed(sql, name);
    sql += direction;
}

bool isExpression(QStringView sortTerms) {
    return std::ranges::any_of(sortTerms, [](QChar c) { return QStringView(u"('\"#").contains(c); });
}

// Length of the first term of a list, up to a comma outside brackets.
qsizetype termLength(QStringView list) {
    bool bracketed = false;
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (list[i] == u'[') bracketed = true;
        if (list[i] == u']') bracketed = false;
        if (list[i] == u',' && !bracketed) return i;
    }
    return list.size();
}

void appendSortList(QString& sql, QStringView orderBy) {
    if (isExpression(orderBy)) {
        sql += orderBy;
        return;
    }
    while (true) {
        const qsizetype length = termLength(orderBy);
        appendSortTerm(sql, orderBy.first(length).trimmed());
        if (length == orderBy.size()) return;
        sql += u", ";
        orderBy = orderBy.sliced(length + 1);
    }
}

// A criterion without ")" cannot get out of the parentheses around it, so the statement's own parse judges it; this
// saves the second parse in walks of many statements.
void refuseEscape(const QString& criteria) {
    if (criteria.contains(u')')) jet::checkCriterion(criteria);
}

// What stands behind a clause: a ";" follows it at once, anything else after a blank.
QString spaced(QStringView tail) {
    return tail.isEmpty() || tail.startsWith(u';') ? tail.toString() : QString(u' ' % tail);
}

} // namespace

QString SqlTools::InsertCriteria(const QString& Template, const QString& Criteria) const {
    if (Criteria.isEmpty()) return Template;
    jet::checkCriterion(Criteria);
    const StatementClauses clauses(Template);
    if (clauses.isUnion()) throwError(invalidOperation);
    const QStringView own = clauses.ownCondition();
    const QString kept = own.isEmpty() ? QString() : QString(u'(' % own % u") AND ");
    return clauses.beforeWhere() % u" WHERE " % kept % u"(True AND (" % Criteria % u"))" % spaced(clauses.afterWhere());
}

QString SqlTools::BuildSelect(const QString& Table, const QString& Criteria, const QString& OrderBy,
                              bool Distinct) const {
    QString sql;
    sql.reserve(Table.size() + Criteria.size() + OrderBy.size() + 64);
    sql += Distinct ? u"SELECT DISTINCT * FROM " : u"SELECT * FROM ";
    appendTable(sql, Table);
    if (!Criteria.isEmpty()) {
        refuseEscape(Criteria);
        sql += u" WHERE (" % Criteria % u')';
    }
    if (!OrderBy.isEmpty()) {
        sql += u" ORDER BY ";
        appendSortList(sql, OrderBy);
    }
    sql += u';';
    return sql;
}

QString SqlTools::InsertOrderBy(const QString& Statement, const QString& OrderClause) const {
    if (OrderClause.isEmpty()) return Statement;
    const StatementClauses clauses(Statement);
    return clauses.beforeOrderBy() % u' ' % OrderClause % clauses.afterOrderBy();
}

} // namespace mkl
