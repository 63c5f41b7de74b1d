#include "controls/ButtonBar.h"

#include "base/RunTimeError.h"
#include "controls/Extender.h"

namespace mkl {

ButtonBar::ButtonBar(QWidget* parent)
    : ButtonRow(parent)
    , confirm_(addButton())
    , cancel_(addButton()) {
    confirm_.setDefault(true);
    for (const Long number : {Confirm, Cancel}) {
        DialogButton& button = Button(number);
        button.setObjectName(QStringLiteral("Button%1").arg(number));
        button.setFocusPolicy(Qt::NoFocus);
        connect(&button, &DialogButton::clicked, this, [this, number] { Q_EMIT Click(number); });
    }
}

DialogButton& ButtonBar::Button(Long Number) const {
    if (Number == Confirm) return confirm_;
    if (Number == Cancel) return cancel_;
    throwError(err::SubscriptOutOfRange);
}

void ButtonBar::press(DialogButton& button) {
    if (button.Visible() && button.Enabled()) button.click();
}

Long ButtonBar::ShowButtons() const {
    return (confirm_.Visible() ? Confirm : 0) + (cancel_.Visible() ? Cancel : 0);
}

void ButtonBar::setShowButtons(Long numbers) {
    for (const Long number : {Confirm, Cancel})
        Button(number).setVisible((numbers & number) != 0);
    arrange();
}

Single ButtonBar::Left() const {
    return mkl::Left(*this);
}

Single ButtonBar::Top() const {
    return mkl::Top(*this);
}

Single ButtonBar::Width() const {
    return mkl::Width(*this);
}

Single ButtonBar::Height() const {
    return mkl::Height(*this);
}

void ButtonBar::setLeft(Single twips) {
    mkl::setLeft(*this, twips);
}

void ButtonBar::setTop(Single twips) {
    mkl::setTop(*this, twips);
}

} // namespace mkl
