#include "jet/binding/Scope.h"

#include "jet/model/Raise.h"

namespace jet {

namespace {

constexpr mkl::Long tooFewParameters = 3061;
constexpr mkl::Long noSuchTable = 3078;
constexpr mkl::Long ambiguousName = 3079;
constexpr mkl::Long doubledTable = 3081;
constexpr mkl::Long badBrackets = 3126;

} // namespace

void UnknownNames::add(QStringView qualifier, QStringView name) {
    // A point in brackets only serves the result columns of a recordset; here it hides a qualified name.
    if (qualifier.isEmpty() && name.contains(u'.')) raiseAt(badBrackets, name, {name.toString()});
    QString shown = name.toString();
    if (!qualifier.isEmpty()) shown.prepend(qualifier.toString() + u'.');
    const QString folded = foldName(shown);
    if (folded_.contains(folded)) return;
    folded_.append(folded);
    shown_.append(shown);
    if (shown_.size() == 1) first_ = spanOf(qualifier, name);
}

void UnknownNames::raise() const {
    if (shown_.isEmpty()) return;
    raiseAt(tooFewParameters, first_, {QString::number(shown_.size()), shown_.join(QStringLiteral(", "))});
}

int Scope::add(TableSource& table, const Schema& schema) {
    const Table* found = schema.findTable(table.table);
    if (!found) raiseAt(noSuchTable, table.table, {table.table.toString()});
    const bool hasAlias = !table.alias.isEmpty();
    return append(table, {found, hasAlias ? table.alias.toString() : found->name, hasAlias});
}

// Without an alias a derived table gets a name that no statement can spell.
int Scope::add(TableSource& table, std::shared_ptr<const BoundSelect> derived, Table columns) {
    columns.name = table.alias.isEmpty() ? QStringLiteral("[%1]").arg(sources_.size()) : table.alias.toString();
    const auto shared = std::make_shared<const Table>(std::move(columns));
    return append(table, {shared.get(), shared->name, true, std::move(derived), shared});
}

int Scope::append(TableSource& table, Source source) {
    if (find(source.name, all()) >= 0)
        raiseAt(doubledTable, table.alias.isEmpty() ? table.table : table.alias, {source.name});
    sources_.push_back(std::move(source));
    table.source = static_cast<int>(sources_.size()) - 1;
    return table.source;
}

int Scope::find(QStringView name, Range range) const {
    for (int i = range.begin; i < range.end; ++i)
        if (sameName((*this)[i].name, name)) return i;
    return -1;
}

bool Scope::resolve(Name& name, Range range) const {
    for (const Scope* scope = this; scope; range = scope->outerRange_, scope = scope->outer_) {
        if (scope->resolveHere(name, range)) {
            if (scope != this) scope->captured_.push_back({name.qualifier, name.name, name.source, name.column});
            return true;
        }
        ++name.level;
    }
    name.level = 0;
    return false;
}

ColumnType Scope::typeOf(const Name& name) const {
    const Scope* scope = this;
    for (int level = name.level; level > 0; --level)
        scope = scope->outer_;
    return scope->column(name).type;
}

bool Scope::resolveHere(Name& name, Range range) const {
    if (!name.qualifier.isEmpty()) {
        const int source = find(name.qualifier, range);
        if (source < 0) return false;
        range = {source, source + 1};
    }
    for (int i = range.begin; i < range.end; ++i) {
        const int column = (*this)[i].table->columnIndex(name.name);
        if (column < 0) continue;
        if (name.source >= 0) raiseAt(ambiguousName, spanOf(name.qualifier, name.name), {name.name.toString()});
        name.source = i;
        name.column = column;
    }
    return name.source >= 0;
}

} // namespace jet
