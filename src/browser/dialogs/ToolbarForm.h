#pragma once
#include "base/Texts.h"
#include "controls/Form.h"
#include "controls/Toolbar.h"

#include <initializer_list>

namespace mkl {

/// A form with the buttons OK and Abbrechen. Esc and Alt+A press the one, Alt+O the other.
class ToolbarForm : public Form {
    Q_OBJECT

public:
    Toolbar TB{this};

protected:
    /// name: of the form. toolTip: of the button OK.
    ToolbarForm(QWidget* owner, const QString& name, TextId caption, TextId toolTip);

    /// The button with the key "OK" was pressed.
    virtual void OK() = 0;
    /// The button with the key "Cancel" was pressed.
    virtual void Cancel() = 0;

    /// The Tab key visits these controls, then the buttons.
    void setTabSequence(std::initializer_list<QWidget*> controls) const;

    void KeyDown(Integer& KeyCode, Integer& Shift) override;
};

} // namespace mkl
