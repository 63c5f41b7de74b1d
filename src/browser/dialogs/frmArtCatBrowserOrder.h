#pragma once
#include "browser/dialogs/OptionRows.h"
#include "browser/dialogs/ToolbarForm.h"
#include "controls/TextBox.h"

#include <QGroupBox>

namespace mkl {

/// Asks what a drop is to mean. Set the labels and the option, and hide the third row where there is none; after Show
/// txtResult holds the index of the chosen option, 0 if the user cancelled.
class frmArtCatBrowserOrder final : public ToolbarForm {
    Q_OBJECT

public:
    explicit frmArtCatBrowserOrder(QWidget* owner);

    OptionButton& Opt(Long Index) const { return pic.Opt(Index); } ///< 1 to 3; another index is error 9
    Label& lbl(Long Index) const { return pic.lbl(Index); }        ///< likewise

    QGroupBox Frame1{this};
    OptionRows pic{&Frame1};
    TextBox txtResult{this}; ///< hidden

protected:
    void OK() override;
    void Cancel() override;
    void Cancelled() override;
    void Activate() override;
    void ResizeForm() override;
};

/// Lets the user choose between up to three meanings of a drop; an empty Text3 leaves the third out. The second one is
/// preselected. Result: 1 to 3, 0 if the user cancelled. owner: the control that asks.
Long OrderDialog(QWidget* owner, const QString& Text1, const QString& Text2, const QString& Text3);

} // namespace mkl
