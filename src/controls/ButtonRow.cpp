#include "controls/ButtonRow.h"

#include <QEvent>

namespace mkl {

namespace {

constexpr int margin = 6;       // pixels above and below the buttons
constexpr int distance = 8;     // between them
constexpr int leastWidth = 100; // of a button

} // namespace

DialogButton& ButtonRow::addButton() {
    buttons_.push_back(new DialogButton(this));
    return *buttons_.back();
}

std::vector<DialogButton*> ButtonRow::visibleButtons() const {
    std::vector<DialogButton*> visible;
    for (DialogButton* button : buttons_)
        if (button->Visible()) visible.push_back(button);
    return visible;
}

QSize ButtonRow::buttonSize() const {
    QSize largest(leastWidth, 0);
    for (const DialogButton* button : visibleButtons())
        largest = largest.expandedTo(button->sizeHint());
    return largest;
}

QSize ButtonRow::sizeHint() const {
    const auto count = static_cast<int>(visibleButtons().size());
    if (count == 0) return {0, 0};
    const QSize button = buttonSize();
    return {count * button.width() + (count - 1) * distance, 2 * margin + button.height()};
}

void ButtonRow::arrange() {
    const QSize size = buttonSize();
    int x = 0;
    for (DialogButton* button : visibleButtons()) {
        button->setGeometry(QRect(QPoint(x, margin), size));
        x += size.width() + distance;
    }
    resize(sizeHint());
}

// A button that shows or gets another caption asks for another layout.
bool ButtonRow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) arrange();
    return QWidget::event(event);
}

} // namespace mkl
