#pragma once
#include "browser/dialogs/OptionRows.h"
#include "browser/dialogs/ToolbarForm.h"
#include "controls/CheckBox.h"
#include "controls/TextBox.h"
#include "controls/TextField.h"
#include "core/ErrorFrame.h"
#include "core/FunctionLibrary.h"
#include "dao/Database.h"

#include <QGroupBox>

namespace mkl {

/// Asks for a new category. After Show txtCatName is empty if the user cancelled, otherwise txtResult holds the place:
/// 1 before the selected category, 2 behind it, 3 as its subcategory. Call A_Init first, then set the labels, the
/// option and the hidden fields; hide Frame1 where there is no category yet.
class frmNewCat final : public ToolbarForm {
    Q_OBJECT

public:
    explicit frmNewCat(QWidget* owner);

    /// What the form needs to check a name; it keeps these until its end. WorkgroupFilter: right-hand side of a
    /// criterion on the sender.
    void A_Init(const Ref<ErrorHandler>& ErrorObject, const Ref<FunctionLibrary>& Helper,
                const Ref<dao::Database>& Backend, const QString& WorkgroupFilter);

    /// Whether the input may be stored; asks the user where the name is taken. Puts the name into the form in which it
    /// is stored.
    bool CheckRecord();
    /// Whether no sibling of the new category bears its name. Where that cannot be found out, as for a name with an
    /// apostrophe, it counts as free.
    bool NameIsFree() const;

    OptionButton& Opt(Long Index) const { return pic.Opt(Index); } ///< 1 to 3; another index is error 9
    Label& lbl(Long Index) const { return pic.lbl(Index); }        ///< likewise
    /// What a click on the option does.
    void Opt_Click(Long Index) const { pic.Opt_Click(Index); }

    QGroupBox Frame1{this};
    OptionRows pic{&Frame1};
    QGroupBox Frame2{this};
    Label lblCatName{&Frame2};
    TextBox txtCatName{&Frame2};
    Label lblNote{&Frame2};
    TextBox txtNote{&Frame2};
    CheckBox chkActive{&Frame2};
    TextBox txtCurrentID{this}; ///< hidden: key of the selected category
    TextBox txtParentID{this};  ///< hidden: key of its parent, empty at the top
    TextBox txtResult{this};    ///< hidden

protected:
    void OK() override;
    void Cancel() override;
    void Cancelled() override;
    void Activate() override;

private:
    void fillFrame1();
    void fillFrame2();
    void arrangeFrame1(Single width);
    void arrangeFrame2(Single top, Single width);
    QString siblings() const;
    bool isTaken() const;
    bool backToName();

    ErrorFrame errorFrame_{nullptr};
    Ref<FunctionLibrary> helper_;
    Ref<dao::Database> backend_;
    QString workgroupFilter_;
    Ref<TextField> nameField_;
    Ref<TextField> noteField_;
};

} // namespace mkl
