#include "browser/dialogs/frmArticleNewPos.h"

#include "base/RunTimeError.h"
#include "base/Texts.h"
#include "browser/dialogs/DialogGeometry.h"
#include "controls/Extender.h"
#include "controls/KeyCodes.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long red = 255;
constexpr Long captionConfirm = 7206;
constexpr Long captionCancel = 7207;
constexpr Long unlimited = 1000; // maximum where the category has no position yet

constexpr Single belowInfo = 100;
constexpr Single belowFrame = 50;
constexpr Single belowWarning = 50;
constexpr Single belowBar = 50;

} // namespace

frmArticleNewPos::frmArticleNewPos(QWidget* owner)
    : Form(owner) {
    setObjectName(u"frmArticleNewPos"_s);
    setCaption(text(TextId::ArticleNewPosCaption));
    lblInfo.setObjectName(u"lblInfo"_s);
    lblWarning.setObjectName(u"lblWarning"_s);
    lblWarning.setForeColor(red);
    chkCancel.setObjectName(u"chkCancel"_s);
    chkCancel.hide();
    chkCancel.setValue(1);
    fillFrame();
    fillBar();
}

void frmArticleNewPos::fillFrame() {
    constexpr std::array captions{TextId::ArticleNewPosFirst, TextId::ArticleNewPosLast, TextId::ArticleNewPosAt};
    Frame1.setObjectName(u"Frame1"_s);
    Frame1.setTitle(text(TextId::ArticleNewPosFrame));
    for (size_t index = 0; index < captions.size(); ++index) {
        options_[index] = new OptionButton(&Frame1, text(captions[index]));
        options_[index]->setObjectName(u"Opt%1"_s.arg(index));
        connect(options_[index], &OptionButton::Click, this, [this, index] { UD.setEnabled(index == 2); });
    }
    UD.setObjectName(u"UD"_s);
    UD.setAccessibleName(text(TextId::ArticleNewPosPosition));
    setTabOrder(options_[2], &UD);
    options_[0]->setValue(true);
}

void frmArticleNewPos::fillBar() {
    BB.setObjectName(u"BB"_s);
    DialogButton& confirm = BB.Button(ButtonBar::Confirm);
    confirm.setCaption(codedText(captionConfirm));
    confirm.setToolTipText(text(TextId::ArticleNewPosConfirm));
    BB.Button(ButtonBar::Cancel).setCaption(codedText(captionCancel));
    BB.arrange();
    connect(&BB, &ButtonBar::Click, this, [this](Long Number) { answer(Number == ButtonBar::Confirm ? 0 : 1); });
}

void frmArticleNewPos::pubInit(const QString& CatName, const QString& OldCatName, Long MaxOrder, Long ArtCount,
                               Long Position) {
    // 1.
    const bool moved = !OldCatName.isEmpty();
    const TextId action = moved ? TextId::ArticleNewPosMoved : TextId::ArticleNewPosInserted;
    lblInfo.setCaption(text(TextId::ArticleNewPosInfo, {QString::number(ArtCount), CatName, text(action)}));
    // 2.
    lblWarning.setCaption(text(TextId::ArticleNewPosWarning, {OldCatName}));
    lblWarning.setVisible(moved);
    // 3.
    UD.setMinimum(1);
    UD.setMaximum(MaxOrder < 1 ? unlimited : MaxOrder);
    UD.setValue(std::max(Position, 1));
    UD.setEnabled(Opt(2).Value());
    // 4.
    const bool filled = MaxOrder >= 1;
    Opt(1).setEnabled(filled);
    Opt(2).setEnabled(filled);
    if (filled && Position >= 2) Opt(2).setValue(true);
    // 5.
    arrange();
    for (OptionButton* option : options_)
        if (option->Value()) option->setFocus();
}

OptionButton& frmArticleNewPos::Opt(Long Index) const {
    if (Index < 0 || Index >= static_cast<Long>(options_.size())) throwError(err::SubscriptOutOfRange);
    return *options_[static_cast<size_t>(Index)];
}

Single frmArticleNewPos::arrangeFrame() {
    Single top = innerTop(Frame1) + rowGap / 2;
    for (OptionButton* option : options_) {
        place(*option, formMargin, top);
        top = bottom(*option) + rowGap;
    }
    const OptionButton& last = *options_.back();
    place(UD, right(last) + rowGap, 0);
    setTop(UD, Top(last) + (mkl::Height(last) - mkl::Height(UD)) / 2);
    mkl::setHeight(Frame1, bottom(UD) + rowGap);
    return std::max(right(UD), right(*options_[1])) + formMargin;
}

void frmArticleNewPos::arrange() {
    const Single frameWidth = arrangeFrame();
    const Single inner = std::max({widthOfCharacters(*this, 64), frameWidth, BB.Width()});
    place(lblInfo, formMargin, formMargin, inner, lblInfo.TextHeight(inner));
    place(Frame1, formMargin, bottom(lblInfo) + belowInfo, inner, mkl::Height(Frame1));
    place(lblWarning, formMargin, bottom(Frame1) + belowFrame, inner, lblWarning.TextHeight(inner));
    const bool warns = Visible(lblWarning);
    BB.setTop((warns ? bottom(lblWarning) : Top(lblWarning)) + belowWarning);
    setSizable(true);
    setWidth(inner + 2 * formMargin);
    setHeight(BB.Top() + BB.Height() + belowBar);
    setSizable(false);
    ResizeForm();
}

void frmArticleNewPos::ResizeForm() {
    BB.setLeft((ScaleWidth() - BB.Width()) / 2);
}

void frmArticleNewPos::KeyDown(Integer& KeyCode, Integer& Shift) {
    if (KeyCode == vbKeyReturn || (Shift != 0 && KeyCode == vbKeyO))
        BB.click(ButtonBar::Confirm);
    else if (KeyCode == vbKeyEscape || (Shift != 0 && KeyCode == vbKeyA))
        BB.click(ButtonBar::Cancel);
    else
        return;
    KeyCode = 0;
}

void frmArticleNewPos::answer(Integer cancelled) {
    chkCancel.setValue(cancelled);
    Hide();
}

void frmArticleNewPos::Cancelled() {
    chkCancel.setValue(1);
}

} // namespace mkl
