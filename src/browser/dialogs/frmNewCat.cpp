#include "browser/dialogs/frmNewCat.h"

#include "browser/dialogs/DialogGeometry.h"
#include "controls/Asker.h"
#include "controls/Extender.h"
#include "core/MessageService.h"
#include "dao/Recordset.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long nameMissing = 1049;
constexpr Long nameTaken = 1050;
constexpr Long asSubcategory = 3;

} // namespace

frmNewCat::frmNewCat(QWidget* owner)
    : ToolbarForm(owner, u"frmNewCat"_s, TextId::NewCatCaption, TextId::NewCatConfirm) {
    fillFrame1();
    fillFrame2();
    txtCurrentID.setObjectName(u"txtCurrentID"_s);
    txtParentID.setObjectName(u"txtParentID"_s);
    txtResult.setObjectName(u"txtResult"_s);
    for (TextBox* hidden : {&txtCurrentID, &txtParentID, &txtResult})
        hidden->hide();
    setTabSequence({&Opt(1), &Opt(2), &Opt(3), &txtCatName, &txtNote, &chkActive});
    txtCatName.setFocus();
}

void frmNewCat::fillFrame1() {
    Frame1.setObjectName(u"Frame1"_s);
    Frame1.setTitle(text(TextId::NewCatPlace));
    pic.setObjectName(u"pic"_s);
    lbl(1).setCaption(text(TextId::NewCatBefore));
    lbl(2).setCaption(text(TextId::NewCatAfter));
    lbl(3).setCaption(text(TextId::NewCatWithin));
    Opt(2).setValue(true);
}

void frmNewCat::fillFrame2() {
    Frame2.setObjectName(u"Frame2"_s);
    Frame2.setTitle(text(TextId::NewCatGeneral));
    lblCatName.setObjectName(u"lblCatName"_s);
    lblCatName.setCaption(text(TextId::NewCatName));
    lblNote.setObjectName(u"lblNote"_s);
    lblNote.setCaption(text(TextId::NewCatNote));
    txtCatName.setObjectName(u"txtCatName"_s);
    txtCatName.setAccessibleName(lblCatName.Caption());
    txtNote.setObjectName(u"txtNote"_s);
    txtNote.setAccessibleName(lblNote.Caption());
    chkActive.setObjectName(u"chkActive"_s);
    chkActive.setText(text(TextId::NewCatActive));
    chkActive.setValue(1);
}

void frmNewCat::A_Init(const Ref<ErrorHandler>& ErrorObject, const Ref<FunctionLibrary>& Helper,
                       const Ref<dao::Database>& Backend, const QString& WorkgroupFilter) {
    errorFrame_ = ErrorFrame(ErrorObject);
    helper_ = Helper;
    backend_ = Backend;
    workgroupFilter_ = WorkgroupFilter;
    nameField_ = Helper->NewTextField();
    nameField_->setTextBox(&txtCatName);
    noteField_ = Helper->NewTextField();
    noteField_->setTextBox(&txtNote);
}

void frmNewCat::Activate() {
    const Single inner = std::max(widthOfCharacters(*this, 68), mkl::Width(TB));
    Single top = formMargin;
    if (Visible(Frame1)) {
        arrangeFrame1(inner);
        top = bottom(Frame1) + rowGap;
    }
    arrangeFrame2(top, inner);
    place(TB, formMargin + inner - mkl::Width(TB), bottom(Frame2) + rowGap / 2, mkl::Width(TB), mkl::Height(TB));
    setSizable(true);
    setWidth(inner + 2 * formMargin);
    setHeight(bottom(TB) + rowGap / 2);
    setSizable(false);
}

void frmNewCat::arrangeFrame1(Single width) {
    const Single inner = width - 2 * formMargin;
    const Single top = innerTop(Frame1);
    pic.arrange(inner, rowGap);
    place(pic, formMargin, top, inner, pic.lastBottom());
    place(Frame1, formMargin, formMargin, width, bottom(pic));
}

void frmNewCat::arrangeFrame2(Single top, Single width) {
    const Single labels = std::max(naturalWidth(lblCatName), naturalWidth(lblNote));
    const Single left = formMargin + labels + rowGap;
    Single row = innerTop(Frame2) + rowGap / 2;
    for (const auto& [label, box] : {std::pair(&lblCatName, &txtCatName), std::pair(&lblNote, &txtNote)}) {
        place(*box, left, row, width - left - formMargin, naturalHeight(*box));
        place(*label, formMargin, row + (mkl::Height(*box) - lineHeight(*label)) / 2, labels, lineHeight(*label));
        row = bottom(*box) + rowGap;
    }
    place(chkActive, left, row);
    place(Frame2, formMargin, top, width, bottom(chkActive) + rowGap);
}

// The form may be closed with its owner while the question is shown.
void frmNewCat::OK() {
    errorFrame_.boundary(u"CheckRecord"_s, [&] {
        if (!CheckRecord() || !isVisible()) return;
        txtResult.setText(QString::number(pic.chosen()));
        Hide();
    });
}

void frmNewCat::Cancel() {
    Cancelled();
    Hide();
}

void frmNewCat::Cancelled() {
    txtResult.setText(u"0"_s);
    txtCatName.clear();
}

bool frmNewCat::CheckRecord() {
    // 1. and 2. A name of blanks alone is none either.
    txtCatName.setText(helper_->StringTools().StorableName(txtCatName.Text(), true, {}));
    if (txtCatName.Text().isEmpty()) {
        messageService().ShowCoded(nameMissing, vbCritical);
        return backToName();
    }
    // 3.
    if (!NameIsFree() && messageService().ShowCoded(nameTaken, vbYesNo | vbQuestion) != vbYes) return backToName();
    // 4.
    return true;
}

bool frmNewCat::backToName() {
    txtCatName.setFocus();
    return false;
}

bool frmNewCat::NameIsFree() const {
    bool taken = false;
    ErrorFrame::quietly([&] { taken = isTaken(); });
    return !taken;
}

bool frmNewCat::isTaken() const {
    const QString statement = helper_->SqlTools().BuildSelect(u"ARTIKEL/KATEGORIEN"_s, siblings(), {}, false);
    const Ref<dao::Recordset> rows = backend_->OpenRecordset(statement, dao::dbOpenSnapshot);
    rows->FindFirst(u"[Kategoriename]='"_s + txtCatName.Text() + u"'"_s);
    return !rows->NoMatch();
}

QString frmNewCat::siblings() const {
    QString criterion;
    if (Opt(asSubcategory).Value())
        criterion = u"[Parent]="_s + txtCurrentID.Text();
    else
        criterion = txtParentID.Text().isEmpty() ? u"[Parent] Is Null"_s : u"[Parent]="_s + txtParentID.Text();
    helper_->StringTools().AppendCriterion(criterion, u"[Absender-Schlüssel] "_s + workgroupFilter_, u" AND "_s, true);
    return criterion;
}

} // namespace mkl
