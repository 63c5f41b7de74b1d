#include "core/FindDialog.h"

#include "base/Texts.h"
#include "controls/Asker.h"
#include "controls/FormRunner.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr Long searchEnded = 1055;
constexpr Long captionOK = 7206;
constexpr Long captionCancel = 7207;

void addButton(QDialogButtonBox& buttons, const QString& name, Long caption, QDialogButtonBox::ButtonRole role) {
    QPushButton* button = buttons.addButton(codedText(caption), role);
    button->setObjectName(name);
}

struct DeletesForm {
    void operator()(const QPointer<QDialog>* form) const { delete form->data(); }
};

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
    const Ref<FindDialog> self(this);             // the control may be closed while the form is shown,
    QPointer<QDialog> form = new QDialog(owner_); // and takes the form along
    const std::unique_ptr<QPointer<QDialog>, DeletesForm> cleanUp(&form);
    const QLineEdit& term = *fillForm(*form, fieldName_);
    if (mode_ == SearchRecordset) return search(form, term);
    const bool confirmed = ask(form);
    if (confirmed) text_ = term.text();
    return confirmed;
}

bool FindDialog::ask(const QPointer<QDialog>& form) {
    return formRunner().run(*form) == QDialog::Accepted && form;
}

// On a clone, so that a term that is not found moves nothing.
bool FindDialog::search(const QPointer<QDialog>& form, const QLineEdit& term) {
    const Ref<dao::Recordset> rows = recordset_->Clone();
    bool confirmed = false, found = false;
    while (ask(form)) {
        const bool goesOn = found && text_ == term.text();
        confirmed = true;
        text_ = term.text();
        if (goesOn)
            rows->FindNext(criterion());
        else
            rows->FindFirst(criterion());
        found = !rows->NoMatch();
        if (found)
            Q_EMIT RecordFound(rows->Bookmark());
        else
            asker().ask({codedText(searchEnded), vbInformation});
        if (!form) break;
    }
    return confirmed;
}

QString FindDialog::criterion() const {
    const QString comparison = text_.contains(u'*') ? u"Like"_s : u"="_s;
    return u"[%1] %2 '%3'"_s.arg(fieldName_, comparison, QString(text_).replace(u'\'', u"''"_s));
}

} // namespace mkl
