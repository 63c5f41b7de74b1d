#pragma once
#include "base/Ref.h"
#include "base/Variant.h"
#include "dao/Recordset.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QDialog;
class QLineEdit;
QT_END_NAMESPACE

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

    /// Shows the dialog, modal to its owner; true if it was confirmed. In the mode SearchRecordset every confirmation
    /// goes on to the next record with that term, and the dialog stays until it is cancelled; the recordset itself is
    /// not moved. 91 without a recordset, otherwise the errors of FindFirst.
    bool Show();
    /// The term that was confirmed last.
    const QString& Text() const { return text_; }

Q_SIGNALS:
    /// A record was found in the recordset.
    void RecordFound(const mkl::Variant& Bookmark);

protected:
    ~FindDialog() override = default; // only ever in an object variable

private:
    static bool ask(const QPointer<QDialog>& form);
    bool search(const QPointer<QDialog>& form, const QLineEdit& term);
    QString criterion() const;

    Mode mode_ = AskForTerm;
    QString fieldName_;
    QPointer<QWidget> owner_;
    Ref<dao::Recordset> recordset_;
    QString text_;
};

} // namespace mkl
