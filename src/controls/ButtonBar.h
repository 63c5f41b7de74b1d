#pragma once
#include "controls/ButtonRow.h"

namespace mkl {

/// The bar of a form whose buttons are addressed by numbers: 16 confirms, 8 cancels. Keys reach it through its form
/// alone; none of its buttons takes the focus.
class ButtonBar final : public ButtonRow {
    Q_OBJECT

public:
    static constexpr Long Confirm = 16;
    static constexpr Long Cancel = 8;

    /// Both buttons show, without captions; the confirming one looks like the one that Enter presses.
    explicit ButtonBar(QWidget* parent);

    /// 16 or 8; another number is error 9.
    DialogButton& Button(Long Number) const;
    /// Presses the button as a user would: it counts only while the button is visible and enabled.
    void click(Long Number) const { press(Button(Number)); }
    /// Sum of the numbers of the buttons that are visible.
    Long ShowButtons() const;
    void setShowButtons(Long numbers);

    Single Left() const;
    Single Top() const;
    Single Width() const;
    Single Height() const;
    void setLeft(Single twips);
    void setTop(Single twips);

Q_SIGNALS:
    /// A visible and enabled button was pressed.
    void Click(mkl::Long Number);

private:
    static void press(DialogButton& button);

    DialogButton& confirm_;
    DialogButton& cancel_;
};

} // namespace mkl
