#pragma once
#include "base/Ref.h"
#include "base/Variant.h"
#include "dao/Recordset.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace mkl {

/// The search dialog: asks for the term of a search.
class FindDialog final : public QObject, public RefCounted {
    Q_OBJECT
public:
    enum Mode : Integer {
        SearchRecordset = 0, ///< the dialog searches its recordset by itself
        AskForTerm = 2,      ///< only asks for the term
    };

    /// Set all four before Show.
    void setMode(Mode mode) { mode_ = mode; }
    void setFieldName(const QString& name) { fieldName_ = name; } ///< the column that the term is meant for
    void setOwnerWindow(QWidget* owner) { owner_ = owner; }       ///< may be nullptr
    void setRecordset(const Ref<dao::Recordset>& recordset) { recordset_ = recordset; }

    /// Shows the dialog, modal to its owner; true if it was confirmed. The mode SearchRecordset raises 3251: a
    /// recordset that can be searched is needed for it.
    bool Show();
    /// The term that was confirmed last.
    const QString& Text() const { return text_; }

Q_SIGNALS:
    /// A record was found in the recordset.
    void RecordFound(const mkl::Variant& Bookmark);

protected:
    ~FindDialog() override = default; // only ever in an object variable

private:
    Mode mode_ = AskForTerm;
    QString fieldName_;
    QPointer<QWidget> owner_;
    Ref<dao::Recordset> recordset_;
    QString text_;
};

} // namespace mkl
