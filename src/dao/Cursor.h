#pragma once
#include "base/Variant.h"
#include "dao/Columns.h"
#include "dao/Connection.h"
#include "dao/Constants.h"

#include <memory>

namespace dao {

/// The rows behind a record set and the position in them; one class per open type. What a type does not offer
/// raises 3251.
class Cursor {
public:
    Cursor(std::shared_ptr<Connection> connection, std::shared_ptr<const Columns> columns);
    virtual ~Cursor() = default;

    const Columns& columns() const { return *columns_; }
    /// False once the database was closed.
    bool isAlive() const { return connection_->isOpen(); }

    virtual Long type() const = 0;
    virtual bool isBof() const = 0;
    virtual bool isEof() const = 0;
    virtual Long recordCount() const = 0;
    virtual Long absolutePosition() const;

    virtual void moveFirst() = 0;
    virtual void moveLast() = 0;
    virtual void moveNext() = 0;
    virtual void movePrevious() = 0;

    /// 3021 without a current row.
    virtual mkl::Variant value(int ordinal) const = 0;

    virtual QString index() const;
    virtual void setIndex(const QString& name);
    virtual void seek(QStringView comparison, const mkl::Variant& key);
    virtual bool noMatch() const { return false; }

protected:
    Connection& connection() const { return *connection_; }

private:
    std::shared_ptr<Connection> connection_;
    std::shared_ptr<const Columns> columns_;
};

} // namespace dao
