#include "browser/dialogs/frmArtCatBrowserOrder.h"

#include "browser/dialogs/DialogGeometry.h"
#include "controls/Extender.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Single belowFrame = 100;
constexpr Single belowBar = 100;
constexpr Long preselected = 2;

} // namespace

frmArtCatBrowserOrder::frmArtCatBrowserOrder(QWidget* owner)
    : ToolbarForm(owner, u"frmArtCatBrowserOrder"_s, TextId::OrderCaption, TextId::OrderConfirm) {
    Frame1.setObjectName(u"Frame1"_s);
    Frame1.setTitle(text(TextId::OrderQuestion));
    pic.setObjectName(u"pic"_s);
    txtResult.setObjectName(u"txtResult"_s);
    txtResult.hide();
    setTabSequence({&Opt(1), &Opt(2), &Opt(3)});
}

// The frame ends where its last label ends; what that label has below its text is the room of the box below it.
void frmArtCatBrowserOrder::Activate() {
    const Single inner = std::max(widthOfCharacters(*this, 68), mkl::Width(TB));
    const Single top = innerTop(Frame1);
    const Single width = inner - 2 * formMargin;
    pic.arrange(width, top);
    place(Frame1, formMargin, formMargin, inner, top + pic.lastBottom());
    place(pic, formMargin, top, width, mkl::Height(Frame1) - 2 * top);
    setTop(TB, bottom(Frame1) + belowFrame);
    setSizable(true);
    setWidth(inner + 2 * formMargin);
    setHeight(bottom(TB) + belowBar);
    setSizable(false);
    ResizeForm();
    if (const Long chosen = pic.chosen()) Opt(chosen).setFocus();
}

void frmArtCatBrowserOrder::ResizeForm() {
    setLeft(TB, (ScaleWidth() - mkl::Width(TB)) / 2);
}

void frmArtCatBrowserOrder::OK() {
    txtResult.setText(QString::number(pic.chosen()));
    Hide();
}

void frmArtCatBrowserOrder::Cancel() {
    Cancelled();
    Hide();
}

void frmArtCatBrowserOrder::Cancelled() {
    txtResult.setText(u"0"_s);
}

Long OrderDialog(QWidget* owner, const QString& Text1, const QString& Text2, const QString& Text3) {
    frmArtCatBrowserOrder form(owner);
    form.lbl(1).setCaption(Text1);
    form.lbl(2).setCaption(Text2);
    form.lbl(3).setCaption(Text3);
    form.pic.setRowVisible(3, !Text3.isEmpty());
    form.Opt(preselected).setValue(true);
    form.pic.Opt_Click(preselected);
    form.Show();
    return form.txtResult.Text().toInt();
}

} // namespace mkl
