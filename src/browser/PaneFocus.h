#pragma once
#include <QPointer>
#include <QWidget>

#include <initializer_list>

namespace mkl {

/// A pane that a read hides loses the focus, to whatever comes next in the window; it has it again afterwards.
class PaneFocus {
public:
    /// Hides the panes and notes which of them had the focus.
    void hide(std::initializer_list<QWidget*> panes);
    /// Gives it back to that one if it shows again, unless the user has gone elsewhere meanwhile.
    void giveBack();

private:
    QPointer<QWidget> before_;
    QPointer<QWidget> meanwhile_; // what got it then
};

} // namespace mkl
