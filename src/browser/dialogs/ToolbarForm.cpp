#include "browser/dialogs/ToolbarForm.h"

#include "controls/KeyCodes.h"

namespace mkl {

using namespace Qt::StringLiterals;

ToolbarForm::ToolbarForm(QWidget* owner, const QString& name, TextId caption, TextId toolTip)
    : Form(owner) {
    setObjectName(name);
    setCaption(text(caption));
    TB.setObjectName(u"TB"_s);
    TB.addButton(u"OK"_s, text(TextId::FormOk), text(toolTip));
    TB.addButton(u"Cancel"_s, text(TextId::FormCancel), text(TextId::FormClose));
    connect(&TB, &Toolbar::ButtonClick, this, [this](const QString& Key) {
        if (Key == "OK"_L1)
            OK();
        else
            Cancel();
    });
}

void ToolbarForm::setTabSequence(std::initializer_list<QWidget*> controls) const {
    DialogButton& confirm = TB.Buttons(u"OK"_s);
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
    else if (alt && KeyCode == vbKeyO)
        TB.Buttons(u"OK"_s).click();
    else
        return;
    KeyCode = 0;
}

} // namespace mkl
