#pragma once
#include "jet/binding/NameResolver.h"

namespace jet {

/// The names that no table has: missing parameters.
class UnknownNames {
public:
    void add(QStringView qualifier, QStringView name);
    /// 3061 with their count, each name counted once.
    void raise() const;

private:
    QStringList folded_;
    QStringList shown_;
    QStringView first_;
};

/// The tables of a FROM clause under the names by which the statement knows them.
class Scope final : public NameResolver {
public:
    struct Source {
        const Table* table;
        QString name; ///< alias, or the table's name as declared
        bool hasAlias;
        std::shared_ptr<const BoundSelect> derived{}; ///< what a derived table stands for
        std::shared_ptr<const Table> derivedTable{};  ///< its columns
    };

    Scope() = default;
    /// Of a subquery: names that its own tables do not have are looked for in that part of the statement around it.
    Scope(const Scope& outer, Range outerRange)
        : outer_(&outer)
        , outerRange_(outerRange) {}

    /// Adds the table and gives its number. 3078 no such table, 3081 a second table of that name.
    int add(TableSource& table, const Schema& schema);
    /// Adds a derived table with those columns. 3081 as above.
    int add(TableSource& table, std::shared_ptr<const BoundSelect> derived, Table columns);

    const std::vector<Source>& sources() const { return sources_; }
    const Source& operator[](int source) const { return sources_[static_cast<size_t>(source)]; }
    Range all() const { return {0, static_cast<int>(sources_.size())}; }
    const Column& column(const Name& name) const { return (*this)[name.source].table->columns[name.column]; }

    /// Number of the source of that name, -1 if there is none.
    int find(QStringView name, Range range) const;
    /// Binds the name to a column in the range, or of the statements around this one; false if there is none. 3079 if
    /// several tables have it.
    bool resolve(Name& name, Range range) const override;
    ColumnType typeOf(const Name& name) const override;

    /// The columns that subqueries used so far, as names of this level.
    const std::vector<Name>& captured() const { return captured_; }
    /// Names are bound; the scope forgets the statement around it and may be moved.
    void detach() { outer_ = nullptr; }

private:
    int append(TableSource& table, Source source);
    bool resolveHere(Name& name, Range range) const;

    std::vector<Source> sources_;
    const Scope* outer_ = nullptr;
    Range outerRange_;
    mutable std::vector<Name> captured_;
};

} // namespace jet
