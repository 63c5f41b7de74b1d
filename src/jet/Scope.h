#pragma once
#include "jet/NameResolver.h"

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
    };

    /// Adds the table and gives its number. 3078 no such table, 3081 a second table of that name.
    int add(TableSource& table, const Schema& schema);

    const std::vector<Source>& sources() const { return sources_; }
    const Source& operator[](int source) const { return sources_[static_cast<size_t>(source)]; }
    Range all() const { return {0, static_cast<int>(sources_.size())}; }
    const Column& column(const Name& name) const { return (*this)[name.source].table->columns[name.column]; }

    /// Number of the source of that name, -1 if there is none.
    int find(QStringView name, Range range) const;
    /// Binds the name to a column in the range; false if there is none. 3079 if several tables have it.
    bool resolve(Name& name, Range range) const override;
    ColumnType typeOf(const Name& name) const override { return column(name).type; }

private:
    std::vector<Source> sources_;
};

} // namespace jet
