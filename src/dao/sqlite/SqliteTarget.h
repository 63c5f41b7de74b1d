#pragma once
#include "jet/model/Target.h"

namespace dao {

/// The native texts of SQLite.
class SqliteTarget final : public jet::Target {
public:
    QByteArray name(QStringView declared) const override;
    QByteArray parameter(int number, jet::ColumnType type) const override;
    QByteArray operand(const QByteArray& value, jet::ColumnType type) const override;
    QByteArray collated(const QByteArray& text) const override;
    QByteArray yesNo(const QByteArray& condition) const override;
    QByteArray condition(const QByteArray& number) const override;
    QByteArray orderTerm(const QByteArray& value, bool descending, bool mayBeNull) const override;
    QByteArray declaredType(jet::ColumnType type) const override;
    QByteArray counterType() const override;
    QByteArray keyIndex(const QByteArray& name, const QByteArray& table, const QByteArray& columns) const override;
    QByteArray deletionRule(const QByteArray& name, const QByteArray& parent, const QByteArray& parentColumn,
                            const QByteArray& child, const QByteArray& childColumn) const override;
    QByteArray rowIdentity(const QByteArray& table) const override;
    QByteArray withRowIdentity(const QByteArray& table) const override;
};

} // namespace dao
