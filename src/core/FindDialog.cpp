#include "core/FindDialog.h"

#include "base/Texts.h"
#include "controls/FormRunner.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr Long unsupportedOperation = 3251;
constexpr Long captionOK = 7206;
constexpr Long captionCancel = 7207;

void addButton(QDialogButtonBox& buttons, const QString& name, Long caption, QDialogButtonBox::ButtonRole role) {
    QPushButton* button = buttons.addButton(codedText(caption), role);
    button->setObjectName(name);
}

// The form: a term to type in and two buttons.
QLineEdit* fillForm(QDialog& form, const QString& fieldName) {
    form.setObjectName(u"FindDialog"_s);
    form.setWindowTitle(text(TextId::FindDialogCaption));
    auto* layout = new QVBoxLayout(&form);
    auto* prompt = new QLabel(text(TextId::FindDialogPrompt, {fieldName}));
    prompt->setTextFormat(Qt::PlainText);
    auto* term = new QLineEdit;
    term->setObjectName(u"txtSearch"_s);
    term->setAccessibleName(prompt->text());
    auto* hint = new QLabel(text(TextId::FindDialogHint));
    auto* buttons = new QDialogButtonBox;
    addButton(*buttons, u"cmdOK"_s, captionOK, QDialogButtonBox::AcceptRole);
    addButton(*buttons, u"cmdCancel"_s, captionCancel, QDialogButtonBox::RejectRole);
    for (QWidget* row : std::initializer_list<QWidget*>{prompt, term, hint, buttons})
        layout->addWidget(row);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &form, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &form, &QDialog::reject);
    return term;
}

} // namespace

bool FindDialog::Show() {
    if (mode_ == SearchRecordset) throwError(unsupportedOperation);
    const Ref<FindDialog> self(this);             // the control may be closed while the form is shown,
    QPointer<QDialog> form = new QDialog(owner_); // and takes the form along
    const QLineEdit* term = fillForm(*form, fieldName_);
    const bool confirmed = formRunner().run(*form) == QDialog::Accepted && form;
    if (confirmed) text_ = term->text();
    delete form;
    return confirmed;
}

} // namespace mkl
