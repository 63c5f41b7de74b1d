#include "browser/dialogs/frmAddArticleFind.h"

#include "base/RunTimeError.h"
#include "browser/dialogs/DialogGeometry.h"
#include "controls/Extender.h"
#include "controls/KeyCodes.h"
#include "controls/ToolTip.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

frmAddArticleFind::frmAddArticleFind(QWidget* owner)
    : ToolbarForm(owner, u"frmAddArticleFind"_s, TextId::ArticleFindCaption,
                  {u"Find"_s, TextId::ArticleFindNext, TextId::ArticleFindNextTip, vbKeyW}) {
    fillFrame2();
    fillFrame1();
    optCancel.setObjectName(u"optCancel"_s);
    optCancel.setAutoExclusive(false);
    optCancel.hide();
    setTabSequence({&txtArtNr, &txtArtikelname, &optMark(0), &optMark(1)});
    confirmation().setFocus();
}

void frmAddArticleFind::fillFrame2() {
    Frame2.setObjectName(u"Frame2"_s);
    Frame2.setTitle(text(TextId::ArticleFindHit));
    lblArtNr.setCaption(text(TextId::ArticleFindNumber));
    lblArtikelname.setCaption(text(TextId::ArticleFindName));
    txtArtNr.setObjectName(u"txtArtNr"_s);
    txtArtikelname.setObjectName(u"txtArtikelname"_s);
    for (const auto& [label, box] : {std::pair(&lblArtNr, &txtArtNr), std::pair(&lblArtikelname, &txtArtikelname)}) {
        box->setReadOnly(true);
        box->setAccessibleName(label->Caption().chopped(1));
    }
}

void frmAddArticleFind::fillFrame1() {
    Frame1.setObjectName(u"Frame1"_s);
    Frame1.setTitle(text(TextId::ArticleFindSelect));
    for (size_t index = 0; index < marks_.size(); ++index) {
        marks_[index] = new OptionButton(&Frame1, text(index == 0 ? TextId::ArticleFindYes : TextId::ArticleFindNo));
        marks_[index]->setObjectName(u"optMark%1"_s.arg(index));
    }
    optMark(0).setValue(true);
}

OptionButton& frmAddArticleFind::optMark(Long Index) const {
    if (Index < 0 || Index >= static_cast<Long>(marks_.size())) throwError(err::SubscriptOutOfRange);
    return *marks_[static_cast<size_t>(Index)];
}

void frmAddArticleFind::A_Lib(const Ref<FunctionLibrary>& Helper) {
    numberField_ = Helper->NewTextField();
    numberField_->setTextBox(&txtArtNr);
    nameField_ = Helper->NewTextField();
    nameField_->setTextBox(&txtArtikelname);
}

void frmAddArticleFind::A_OwnerHwnd(QWidget* hWnd) {
    ownerHwnd_ = hWnd;
    if (hWnd) setOwner(hWnd);
}

void frmAddArticleFind::Activate() {
    const Single inner = std::max(widthOfCharacters(*this, 60), mkl::Width(TB));
    arrangeFrame2(inner);
    arrangeFrame1(inner);
    place(TB, formMargin + inner - mkl::Width(TB), bottom(Frame1) + rowGap / 2, mkl::Width(TB), mkl::Height(TB));
    setSizable(true);
    setWidth(inner + 2 * formMargin);
    setHeight(bottom(TB) + rowGap / 2);
    setSizable(false);
    txtArtikelname.setCursorPosition(0); // a long name shows from its beginning
    txtArtikelname.setToolTip(plainToolTip(txtArtikelname.Text()));
}

void frmAddArticleFind::arrangeFrame2(Single width) {
    const Single labels = std::max(naturalWidth(lblArtNr), naturalWidth(lblArtikelname));
    const Single left = formMargin + labels + rowGap;
    Single row = innerTop(Frame2) + rowGap / 2;
    for (const auto& [label, box] : {std::pair(&lblArtNr, &txtArtNr), std::pair(&lblArtikelname, &txtArtikelname)}) {
        place(*box, left, row, width - left - formMargin, naturalHeight(*box));
        place(*label, formMargin, row + (mkl::Height(*box) - lineHeight(*label)) / 2, labels, lineHeight(*label));
        row = bottom(*box) + rowGap;
    }
    mkl::setWidth(txtArtNr, std::min(mkl::Width(txtArtNr), widthOfCharacters(*this, 16)));
    place(Frame2, formMargin, formMargin, width, row);
}

void frmAddArticleFind::arrangeFrame1(Single width) {
    Single left = formMargin;
    for (OptionButton* option : marks_) {
        place(*option, left, innerTop(Frame1) + rowGap / 2);
        left = right(*option) + 2 * formMargin;
    }
    place(Frame1, formMargin, bottom(Frame2) + rowGap, width, bottom(optMark(0)) + rowGap);
}

void frmAddArticleFind::OK() {
    optCancel.setValue(false);
    Hide();
}

void frmAddArticleFind::Cancel() {
    Cancelled();
    Hide();
}

void frmAddArticleFind::Cancelled() {
    optCancel.setValue(true);
}

} // namespace mkl
