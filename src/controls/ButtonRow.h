#pragma once
#include "controls/DialogButton.h"

#include <QWidget>
#include <vector>

namespace mkl {

/// The buttons of a form side by side, equally wide, in the order in which they were added; hidden ones take no room.
/// The row is as wide as its buttons and a little
/// higher.
class ButtonRow : public QWidget {
    Q_OBJECT

public:
    explicit ButtonRow(QWidget* parent)
        : QWidget(parent) {}

    QSize sizeHint() const override;
    /// Places the buttons and takes the size that they need.
    void arrange();

protected:
    DialogButton& addButton();
    bool event(QEvent* event) override;

private:
    std::vector<DialogButton*> visibleButtons() const;
    QSize buttonSize() const;

    std::vector<DialogButton*> buttons_; // children of the row
};

} // namespace mkl
