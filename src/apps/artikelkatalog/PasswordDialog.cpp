#include "apps/artikelkatalog/PasswordDialog.h"

#include "base/Texts.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr int noteCharacters = 52; // in a line

QLabel* note(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFixedWidth(noteCharacters * label->fontMetrics().averageCharWidth());
    return label;
}

} // namespace

PasswordDialog::PasswordDialog(const Question& question, QWidget* parent)
    : QDialog(parent)
    , password_(new QLineEdit(this))
    , remember_(new QCheckBox(text(TextId::ProgramPasswordRemember), this)) {
    setObjectName(u"PasswordDialog"_s);
    setWindowTitle(text(TextId::ProgramPasswordTitle));
    auto* grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    const QString prompt = text(TextId::ProgramPasswordPrompt, {question.catalogue, question.user});
    setAccessibleDescription(prompt);
    grid->addWidget(note(u"Prompt"_s, prompt, this), 0, 0, 1, 2);
    if (question.isWrong) grid->addWidget(note(u"Wrong"_s, text(TextId::ProgramPasswordWrong), this), 1, 0, 1, 2);
    auto* label = new QLabel(text(TextId::ProgramPasswordLabel), this);
    label->setBuddy(password_);
    password_->setObjectName(u"Password"_s);
    password_->setEchoMode(QLineEdit::Password);
    grid->addWidget(label, 2, 0);
    grid->addWidget(password_, 2, 1);
    remember_->setObjectName(u"Remember"_s);
    remember_->setChecked(question.isRemembered);
    remember_->setVisible(question.canRemember);
    if (question.canRemember)
        grid->addWidget(remember_, 3, 1);
    else
        grid->addWidget(note(u"NoStore"_s, text(TextId::ProgramPasswordNoStore), this), 3, 0, 1, 2);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(text(TextId::FormOk), QDialogButtonBox::AcceptRole)->setObjectName(u"OK"_s);
    buttons->addButton(text(TextId::FormCancel), QDialogButtonBox::RejectRole)->setObjectName(u"Cancel"_s);
    connect(buttons, &QDialogButtonBox::accepted, this, &PasswordDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &PasswordDialog::reject);
    grid->setRowMinimumHeight(4, fontMetrics().height());
    grid->addWidget(buttons, 5, 0, 1, 2);
    password_->setFocus();
}

QString PasswordDialog::Password() const {
    return password_->text();
}

bool PasswordDialog::Remember() const {
    return !remember_->isHidden() && remember_->isChecked();
}

} // namespace mkl
