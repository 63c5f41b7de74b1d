#include "controls/OptionButton.h"

namespace mkl {

OptionButton::OptionButton(QWidget* parent, const QString& caption)
    : QRadioButton(caption, parent) {
    connect(this, &QRadioButton::toggled, this, [this](bool value) {
        if (!value) return;
        takeTabStop();
        Q_EMIT Click();
    });
}

// The toolkit does the same, but not before one of them had the focus.
void OptionButton::takeTabStop() {
    if (!parentWidget()) return;
    for (OptionButton* option : parentWidget()->findChildren<OptionButton*>(Qt::FindDirectChildrenOnly))
        option->setFocusPolicy(option == this ? Qt::StrongFocus : Qt::ClickFocus);
}

} // namespace mkl
