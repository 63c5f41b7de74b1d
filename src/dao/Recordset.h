#pragma once
#include "base/Ref.h"
#include "base/Variant.h"
#include "dao/Constants.h"

#include <QString>
#include <memory>

namespace jet {
struct OutputColumn;
}

namespace dao {

class Recordset;
class Cursor;

/// One column of a record set. A handle: reading it gives the value of the current row.
class Field {
public:
    Field(mkl::Ref<Recordset> recordset, int ordinal);

    QString Name() const;
    QString SourceTable() const;
    QString SourceField() const;
    mkl::Variant Value() const;               ///< 3021 without a current row
    void setValue(const mkl::Variant& value); ///< 3020 without Edit or AddNew

private:
    const jet::OutputColumn& column() const;

    mkl::Ref<Recordset> recordset_;
    int ordinal_;
};

/// Rows of a table (type 1), a fixed copy (4) or a single pass (8). Errors are mkl::RunTimeError.
/// No read cursor of the engine stays open between two calls.
class Recordset final : public mkl::RefCounted {
public:
    explicit Recordset(std::unique_ptr<Cursor> cursor);
    ~Recordset() override;

    Long Type() const;
    bool Bof() const;
    bool Eof() const;
    Long RecordCount() const;      ///< rows visited so far; of a table all rows
    Long AbsolutePosition() const; ///< from 0, -1 without a current row; 3251 on types 1 and 8
    bool NoMatch() const;

    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();

    QString Index() const;
    void setIndex(const QString& name);
    /// comparison is "=", ">=", ">", "<=" or "<"; the values are those of the index's columns.
    void Seek(QStringView comparison, const mkl::Variant& key);

    Field Fields(QStringView name); ///< 3265 for an unknown name
    Field Fields(Long ordinal);     ///< from 0
    Long FieldCount() const;
    /// Position of the column of that name, -1 if there is none.
    int ordinal(QStringView name) const;
    /// The current row's value: Fields(name).Value() without the handle.
    mkl::Variant value(QStringView name) const;
    mkl::Variant value(int ordinal) const;

    void Close();
    bool isOpen() const;

private:
    friend class Field;

    Cursor& cursor() const; // 3420 once it or its database is closed
    int requiredOrdinal(QStringView name) const;
    int checkedOrdinal(int ordinal) const;

    std::unique_ptr<Cursor> cursor_;
};

} // namespace dao
