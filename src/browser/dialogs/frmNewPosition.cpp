#include "browser/dialogs/frmNewPosition.h"

#include "browser/dialogs/DialogGeometry.h"
#include "controls/Extender.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

frmNewPosition::frmNewPosition(QWidget* owner)
    : ToolbarForm(owner, u"frmNewPosition"_s, TextId::NewPositionCaption, TextId::NewPositionConfirm) {
    lblPosition.setObjectName(u"lblPosition"_s);
    lblPosition.setCaption(text(TextId::NewPositionPrompt));
    UD.setObjectName(u"UD"_s);
    UD.setAccessibleName(lblPosition.Caption());
    chkCancel.setObjectName(u"chkCancel"_s);
    chkCancel.hide();
    chkCancel.setValue(1);
    setTabSequence({&UD});
    UD.setFocus();
    arrange();
}

void frmNewPosition::arrange() {
    UD.setMaximum(9'999'999); // room for the digits of any position
    const Single inner = std::max({widthOfCharacters(*this, 36), mkl::Width(TB), naturalWidth(UD)});
    place(lblPosition, formMargin, formMargin, inner, lblPosition.TextHeight(inner));
    place(UD, formMargin, bottom(lblPosition) + rowGap);
    setWidth(inner + 2 * formMargin);
    place(TB, formMargin + inner - mkl::Width(TB), bottom(UD) + rowGap, mkl::Width(TB), mkl::Height(TB));
    setHeight(bottom(TB) + rowGap);
    setSizable(false);
}

void frmNewPosition::OK() {
    chkCancel.setValue(0);
    Hide();
}

void frmNewPosition::Cancel() {
    chkCancel.setValue(1);
    Hide();
}

void frmNewPosition::Cancelled() {
    chkCancel.setValue(1);
}

} // namespace mkl
