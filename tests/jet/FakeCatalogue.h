#pragma once
// Tables and an engine that exist only as far as the dialect asks about them.
#include "jet/Compiler.h"
#include "jet/model/Target.h"

#include <QHash>

namespace jet {

/// The tables of a small catalogue, and one whose columns have all types.
class FakeSchema final : public Schema {
public:
    FakeSchema() {
        using enum ColumnType;
        add({QStringLiteral("ARTIKEL"),
             {{QStringLiteral("Artikel-Schlüssel"), Int, true, false},
              {QStringLiteral("Artikelname"), Text},
              {QStringLiteral("Aktiv"), Boolean},
              {QStringLiteral("LetzteÄnderung"), Date}},
             {},
             {0}});
        add({QStringLiteral("ARTKAT"),
             {{QStringLiteral("ArtKatID"), Int, true, false},
              {QStringLiteral("Artikel-Schlüssel"), Int},
              {QStringLiteral("Kategorie-Schlüssel"), Int},
              {QStringLiteral("Order"), Int},
              {QStringLiteral("LetzteÄnderung"), Date}},
             {},
             {0}});
        add({QStringLiteral("ARTIKEL/KATEGORIEN"),
             {{QStringLiteral("Kategorie-Schlüssel"), Int},
              {QStringLiteral("Parent"), Int},
              {QStringLiteral("Order"), Int},
              {QStringLiteral("Kategoriename"), Text},
              {QStringLiteral("Aktiv"), Boolean},
              {QStringLiteral("Absender-Schlüssel"), Int}},
             {},
             {0}});
        add({QStringLiteral("TYPEN"),
             {{QStringLiteral("yn"), Boolean},
              {QStringLiteral("lng"), Int},
              {QStringLiteral("dbl"), Double},
              {QStringLiteral("cur"), Currency},
              {QStringLiteral("dat"), Date},
              {QStringLiteral("txt"), Text},
              {QStringLiteral("bin"), Binary},
              {QStringLiteral("any"), Unknown}},
             {},
             {}});
    }

    const Table* findTable(QStringView name) const override {
        const auto found = tables_.constFind(foldName(name));
        return found == tables_.constEnd() ? nullptr : &*found;
    }

private:
    void add(const Table& table) { tables_.insert(foldName(table.name), table); }

    QHash<QString, Table> tables_;
};

/// Writes each hook so that a test sees it.
class FakeTarget final : public Target {
public:
    QByteArray name(QStringView declared) const override { return '"' + declared.toUtf8() + '"'; }
    QByteArray parameter(int number, ColumnType) const override { return '?' + QByteArray::number(number); }
    QByteArray operand(const QByteArray& value, ColumnType type) const override {
        if (type == ColumnType::Date) return "date:" + value;
        return type == ColumnType::Currency ? "currency:" + value : value;
    }
    QByteArray collated(const QByteArray& text) const override { return "key:" + text; }
    QByteArray yesNo(const QByteArray& condition) const override { return "yesno" + condition; }
    QByteArray condition(const QByteArray& number) const override { return number + " is true"; }
    QByteArray orderTerm(const QByteArray& value, bool descending, bool mayBeNull) const override {
        return value + (descending ? " down" : " up") + (mayBeNull ? "" : " of values");
    }
    QByteArray declaredType(ColumnType type) const override { return "TYPE" + QByteArray::number(int(type)); }
    QByteArray counterType() const override { return "COUNTER"; }
    QByteArray keyIndex(const QByteArray& name, const QByteArray& table, const QByteArray& columns) const override {
        return "KEY " + name + " OF " + table + '(' + columns + ");";
    }
    QByteArray deletionRule(const QByteArray& name, const QByteArray& parent, const QByteArray&,
                            const QByteArray& child, const QByteArray&) const override {
        return "RULE " + name + " OF " + parent + " AND " + child + ';';
    }
    QByteArray withRowIdentity(const QByteArray& table) const override { return "(rows of " + table + ')'; }
    QByteArray rowIdentity(const QByteArray& table) const override { return table + ".row"; }
};

/// The plan for that statement on the fake tables.
inline Plan planOf(QStringView text) {
    static const FakeSchema schema;
    return compileStatement(text, schema, FakeTarget());
}

} // namespace jet
