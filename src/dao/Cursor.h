#pragma once
#include "base/Variant.h"
#include "dao/Columns.h"
#include "dao/Connection.h"
#include "dao/Constants.h"

#include <memory>
#include <span>

namespace dao {

/// The rows behind a record set and the position in them; one class per open type. What a type does not offer
/// raises 3251.
class Cursor {
public:
    enum class FindMode : quint8 { First, Next, Previous, Last };

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
    virtual void setAbsolutePosition(Long position);

    virtual void moveFirst() = 0;
    virtual void moveLast() = 0;
    virtual void moveNext() = 0;
    virtual void movePrevious() = 0;
    /// Row by row, up to Eof or Bof.
    virtual void moveBy(Long rows);

    virtual void find(FindMode mode, QStringView criterion);
    virtual bool noMatch() const { return false; }

    virtual QString index() const;
    virtual void setIndex(const QString& name);
    virtual void seek(QStringView comparison, std::span<const mkl::Variant> keys);

    virtual mkl::Variant bookmark() const;
    virtual void setBookmark(const mkl::Variant& bookmark);
    virtual mkl::Variant lastModified() const;
    virtual std::unique_ptr<Cursor> clone() const;

    /// Filter and Sort have a meaning.
    virtual bool canDerive() const { return false; }
    /// A cursor over these rows, as they pass the filter and in the order of sort; both may be empty.
    virtual std::unique_ptr<Cursor> derive(const QString& filter, const QString& sort, Long type);
    virtual void requery();

    /// 3021 without a current row, 3167 if it was deleted. While a row is edited or added, the value to be stored.
    virtual mkl::Variant value(int ordinal) const = 0;

    // Editing. Whoever moves calls dropEdit() first.
    virtual bool isUpdatable() const { return false; }
    virtual EditMode editMode() const { return EditMode::None; }
    virtual void edit();
    virtual void addNew();
    virtual void setValue(int ordinal, const mkl::Variant& value); ///< 3020 unless overridden
    virtual void update();                                         ///< 3020 unless overridden
    virtual void cancelUpdate();                                   ///< 3020 unless overridden
    virtual void remove();
    virtual void dropEdit() {}

protected:
    Connection& connection() const { return *connection_; }
    const std::shared_ptr<Connection>& sharedConnection() const { return connection_; }
    const std::shared_ptr<const Columns>& sharedColumns() const { return columns_; }

private:
    std::shared_ptr<Connection> connection_;
    std::shared_ptr<const Columns> columns_;
};

} // namespace dao
