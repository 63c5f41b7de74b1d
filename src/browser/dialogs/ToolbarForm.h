#pragma once
#include "base/Texts.h"
#include "controls/Form.h"
#include "controls/Toolbar.h"

#include <initializer_list>

namespace mkl {

/// A form with a button that confirms, OK unless told otherwise, and Abbrechen. Esc and Alt+A press the latter, Alt
/// with the button's letter the former.
class ToolbarForm : public Form {
    Q_OBJECT

public:
    Toolbar TB{this};

protected:
    /// The button that confirms.
    struct Confirmation {
        QString key;
        TextId caption;
        TextId toolTip;
        Integer keyCode; ///< of its letter
    };
    /// name: of the form.
    ToolbarForm(QWidget* owner, const QString& name, TextId caption, const Confirmation& confirmation);
    /// The same with OK; toolTip: of that button.
    ToolbarForm(QWidget* owner, const QString& name, TextId caption, TextId toolTip);

    DialogButton& confirmation() const { return TB.Buttons(confirmation_.key); }
    /// The button that confirms was pressed.
    virtual void OK() = 0;
    /// The button with the key "Cancel" was pressed.
    virtual void Cancel() = 0;

    /// The Tab key visits these controls, then the buttons.
    void setTabSequence(std::initializer_list<QWidget*> controls) const;

    void KeyDown(Integer& KeyCode, Integer& Shift) override;

private:
    const Confirmation confirmation_;
};

} // namespace mkl
