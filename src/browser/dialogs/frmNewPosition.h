#pragma once
#include "browser/dialogs/ToolbarForm.h"
#include "controls/CheckBox.h"
#include "controls/Label.h"
#include "controls/UpDownCtl.h"

namespace mkl {

/// Asks for a new position. Set UD before Show; afterwards chkCancel is 0 if the user confirmed.
class frmNewPosition final : public ToolbarForm {
    Q_OBJECT

public:
    explicit frmNewPosition(QWidget* owner);

    Label lblPosition{this};
    UpDownCtl UD{this};
    CheckBox chkCancel{this}; ///< hidden, 1 until the user confirms

protected:
    void OK() override;
    void Cancel() override;
    void Cancelled() override;

private:
    void arrange();
};

} // namespace mkl
