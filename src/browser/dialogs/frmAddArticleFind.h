#pragma once
#include "browser/dialogs/ToolbarForm.h"
#include "controls/Label.h"
#include "controls/OptionButton.h"
#include "controls/TextBox.h"
#include "controls/TextField.h"
#include "core/FunctionLibrary.h"

#include <QGroupBox>
#include <array>

namespace mkl {

/// Shows an article that a search has found and asks whether it stays selected. Set both texts before each Show;
/// afterwards optCancel is set if the user stops the search, otherwise optMark(0) tells whether the article is wanted.
/// The form keeps its place and the option from one hit to the next.
class frmAddArticleFind final : public ToolbarForm {
    Q_OBJECT

public:
    explicit frmAddArticleFind(QWidget* owner);

    /// The helper that makes fields of the texts; they are released with the form.
    void A_Lib(const Ref<FunctionLibrary>& Helper);
    /// The window over which the form stands; none leaves it over that of its owner.
    void A_OwnerHwnd(QWidget* hWnd);

    OptionButton& optMark(Long Index) const; ///< 0 Ja, 1 Nein; another index is error 9

    QGroupBox Frame2{this};
    Label lblArtNr{&Frame2};
    TextBox txtArtNr{&Frame2};
    Label lblArtikelname{&Frame2};
    TextBox txtArtikelname{&Frame2};
    QGroupBox Frame1{this};
    OptionButton optCancel{this}; ///< hidden

protected:
    void OK() override;
    void Cancel() override;
    void Cancelled() override;
    void Activate() override;

private:
    void fillFrame2();
    void fillFrame1();
    void arrangeFrame2(Single width);
    void arrangeFrame1(Single width);

    std::array<OptionButton*, 2> marks_{}; // children of Frame1
    QPointer<QWidget> ownerHwnd_;
    Ref<TextField> numberField_;
    Ref<TextField> nameField_;
};

} // namespace mkl
