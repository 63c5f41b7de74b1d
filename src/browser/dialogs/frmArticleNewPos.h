#pragma once
#include "controls/ButtonBar.h"
#include "controls/CheckBox.h"
#include "controls/Form.h"
#include "controls/Label.h"
#include "controls/OptionButton.h"
#include "controls/UpDownCtl.h"

#include <QGroupBox>
#include <array>

namespace mkl {

/// Asks at which position of a category articles are to be put in. Enter confirms and Esc cancels; so do O and A with
/// any of Shift, Ctrl and Alt, in the number field too. After Show chkCancel is 0 if the user confirmed; then one of
/// the options holds, and for Opt(2) the position is UD's value.
class frmArticleNewPos final : public Form {
    Q_OBJECT

public:
    explicit frmArticleNewPos(QWidget* owner);

    /// CatName: the category; OldCatName: the one that the articles are taken from, empty if they only come in.
    /// MaxOrder: highest position of the category, 0 if it has none. Position: the proposed one, 0 for none.
    void pubInit(const QString& CatName, const QString& OldCatName, Long MaxOrder, Long ArtCount, Long Position);

    /// 0 at position 1, 1 behind the last one, 2 at the position of UD; another index is error 9.
    OptionButton& Opt(Long Index) const;

    Label lblInfo{this};
    QGroupBox Frame1{this};
    UpDownCtl UD{&Frame1}; ///< enabled while Opt(2) holds
    Label lblWarning{this};
    ButtonBar BB{this};
    CheckBox chkCancel{this}; ///< hidden, 1 until the user confirms

protected:
    void KeyDown(Integer& KeyCode, Integer& Shift) override;
    void Cancelled() override;
    void ResizeForm() override;

private:
    void answer(Integer cancelled);
    void fillFrame();
    void fillBar();
    Single arrangeFrame();
    void arrange();

    std::array<OptionButton*, 3> options_ = {}; // children of the frame
};

} // namespace mkl
