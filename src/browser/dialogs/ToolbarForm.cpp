#include "browser/dialogs/ToolbarForm.h"

#include "controls/KeyCodes.h"

namespace mkl {

using namespace Qt::StringLiterals;

ToolbarForm::ToolbarForm(QWidget* owner, const QString& name, TextId caption, TextId toolTip)
    : ToolbarForm(owner, name, caption, {u"OK"_s, TextId::FormOk, toolTip, vbKeyO}) {}

ToolbarForm::ToolbarForm(QWidget* owner, const QString& name, TextId caption, const Confirmation& confirmation)
    : Form(owner)
    , confirmation_(confirmation) {
    setObjectName(name);
    setCaption(text(caption));
    TB.setObjectName(u"TB"_s);
    TB.addButton(confirmation.key, text(confirmation.caption), text(confirmation.toolTip));
    TB.addButton(u"Cancel"_s, text(TextId::FormCancel), text(TextId::FormClose));
    connect(&TB, &Toolbar::ButtonClick, this, [this](const QString& Key) {
        if (Key == confirmation_.key)
            OK();
        else
            Cancel();
    });
}

void ToolbarForm::setTabSequence(std::initializer_list<QWidget*> controls) const {
    DialogButton& confirm = confirmation();
    QWidget* former = nullptr;
    for (QWidget* control : controls) {
        if (former) setTabOrder(former, control);
        former = control;
    }
    setTabOrder(former, &confirm);
    setTabOrder(&confirm, &TB.Buttons(u"Cancel"_s));
}

void ToolbarForm::KeyDown(Integer& KeyCode, Integer& Shift) {
    const bool alt = Shift == vbAltMask;
    if (KeyCode == vbKeyEscape || (alt && KeyCode == vbKeyA))
        TB.Buttons(u"Cancel"_s).click();
    else if (alt && KeyCode == confirmation_.keyCode)
        confirmation().click();
    else
        return;
    KeyCode = 0;
}

} // namespace mkl
