#pragma once
#include "base/Ref.h"
#include "base/Variant.h"
#include "dao/Constants.h"

#include <QString>
#include <array>
#include <memory>
#include <span>

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
    Long Type() const; ///< dbBoolean...; 0 where each row may hold a value of another type
    QString SourceTable() const;
    QString SourceField() const;
    mkl::Variant Value() const; ///< 3021 without a current row
    /// 3020 without Edit or AddNew, 3421 a value that does not fit, 3164 a column that takes none.
    void setValue(const mkl::Variant& value);

private:
    const jet::OutputColumn& column() const;

    mkl::Ref<Recordset> recordset_;
    int ordinal_;
};

/// Rows of a table (type 1), a set of rows to be edited (2), a fixed copy (4) or a single pass (8). Errors are
/// mkl::RunTimeError: 3420 once it or its database is closed, 3251 where the type does not offer the member.
/// No read cursor of the engine stays open between two calls. A move, a find, a seek and setting a bookmark lose what
/// Edit or AddNew began and Update did not store.
class Recordset final : public mkl::RefCounted {
public:
    explicit Recordset(std::unique_ptr<Cursor> cursor, QString name = {});
    ~Recordset() override;

    QString Name() const; ///< the table or statement that it was opened with
    Long Type() const;
    bool Updatable() const;
    bool Bof() const;
    bool Eof() const;
    Long RecordCount() const;      ///< rows visited so far; of a table all rows
    Long AbsolutePosition() const; ///< from 0, -1 without a current row; 3251 on types 1 and 8
    void setAbsolutePosition(Long position);
    float PercentPosition() const; ///< 0 to 100 within the rows visited so far

    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    void Move(Long rows); ///< past an end: to Eof or Bof
    void Move(Long rows, const mkl::Variant& startBookmark);

    /// Types 2 and 4. The criterion is what stands behind WHERE: 3077 syntax, 3070 unknown name, 3464 types.
    /// Without a match a snapshot stays where it was and a dynaset has no current row.
    void FindFirst(QStringView criterion);
    void FindNext(QStringView criterion);
    void FindPrevious(QStringView criterion);
    void FindLast(QStringView criterion);
    bool NoMatch() const;

    QString Index() const;
    void setIndex(const QString& name); ///< 3015 unknown index
    /// comparison is "=", ">=", ">", "<=" or "<"; the keys are values of the index's first columns.
    template<class... Keys>
    void Seek(QStringView comparison, const Keys&... keys) {
        seek(comparison, std::array<mkl::Variant, sizeof...(Keys)>{mkl::Variant(keys)...});
    }

    /// Names a row for this record set and its clones, until Requery or Close: 3159 elsewhere.
    mkl::Variant Bookmark() const; ///< 3021 without a current row
    void setBookmark(const mkl::Variant& bookmark);
    mkl::Variant LastModified() const; ///< bookmark of the row stored last; 3021 if there is none
    /// The same rows with a position of its own; without a current row at first.
    mkl::Ref<Recordset> Clone() const;

    /// Rows and order of the record sets that OpenRecordset derives; this one stays as it is. Both 3251 on type 1.
    QString Filter() const;
    void setFilter(const QString& criterion);
    QString Sort() const;
    void setSort(const QString& order);
    /// 0 means the type of this one, and a dynaset of a table.
    mkl::Ref<Recordset> OpenRecordset(Long type = 0);
    void Requery();

    void Edit();
    void AddNew();
    void Update();       ///< 3020 without Edit or AddNew
    void CancelUpdate(); ///< 3020 without Edit or AddNew
    void Delete();
    dao::EditMode EditMode() const;

    Field Fields(QStringView name); ///< by name or "TABLE.Column"; 3265 for an unknown one
    Field Fields(Long ordinal);     ///< from 0
    Long FieldCount() const;
    /// Position of the column of that name, -1 if there is none.
    int ordinal(QStringView name) const;
    /// The current row's value: Fields(name).Value() without the handle.
    mkl::Variant value(QStringView name) const;
    mkl::Variant value(int ordinal) const;
    void setValue(QStringView name, const mkl::Variant& value);
    void setValue(int ordinal, const mkl::Variant& value);

    void Close();
    bool isOpen() const;

private:
    friend class Field;

    Cursor& cursor() const; // 3420 once it or its database is closed
    Cursor& leavingTheRow() const;
    void requireDerivable() const;
    void seek(QStringView comparison, std::span<const mkl::Variant> keys);
    int requiredOrdinal(QStringView name) const;
    int checkedOrdinal(int ordinal) const;

    std::unique_ptr<Cursor> cursor_;
    QString name_;
    QString filter_;
    QString sort_;
};

} // namespace dao
