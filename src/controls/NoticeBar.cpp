#include "controls/NoticeBar.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <algorithm>

namespace mkl {

namespace {

constexpr int margin = 8; // pixels
constexpr int linkMargin = 3;

/// A ground that differs from the window's without being loud, in light palettes and in dark ones.
QColor ground(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window), accent = palette.color(QPalette::Highlight);
    const auto between = [](int one, int other) { return (3 * one + other) / 4; };
    return {between(window.red(), accent.red()), between(window.green(), accent.green()),
            between(window.blue(), accent.blue())};
}

} // namespace

LinkButton::LinkButton(QWidget* parent)
    : QAbstractButton(parent) {
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
}

QSize LinkButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2 * linkMargin, fontMetrics().height()};
}

void LinkButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (!hasFocus()) return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.backgroundColor = ground(palette());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

void LinkButton::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent)
    , text_(new QLabel(this))
    , action_(new LinkButton(this)) {
    text_->setTextFormat(Qt::PlainText);
    connect(action_, &LinkButton::clicked, this, &NoticeBar::ActionClick);
    connect(qApp, &QApplication::focusChanged, this, &NoticeBar::focusMoved);
    NoticeBar::setVisible(false);
}

QString NoticeBar::Text() const {
    return text_->text();
}

void NoticeBar::setNotice(const QString& text, const QString& action) {
    if (text == Text() && action == Action()) return;
    text_->setText(text);
    action_->setObjectName(objectName() + QStringLiteral("Action"));
    action_->setText(action);
    action_->setAccessibleDescription(text);
    setAccessibleName(text);
    resize(sizeHint());
    if (isVisible()) tell();
}

void NoticeBar::setVisible(bool visible) {
    const bool comes = visible && isHidden();
    QWidget* const back = !visible && action_->hasFocus() ? formerFocus_.data() : nullptr;
    if (back) back->setFocus(Qt::OtherFocusReason);
    QFrame::setVisible(visible);
    if (comes) tell();
}

void NoticeBar::tell() {
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

QSize NoticeBar::sizeHint() const {
    const int width = text_->sizeHint().width() + action_->sizeHint().width() + 3 * margin;
    return {width, text_->sizeHint().height() + margin};
}

void NoticeBar::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    const QSize text = text_->sizeHint(), action = action_->sizeHint();
    const int right = std::max(width() - margin - action.width(), margin);
    action_->setGeometry(right, (height() - action.height()) / 2, action.width(), action.height());
    text_->setGeometry(margin, (height() - text.height()) / 2, std::max(right - 2 * margin, 0), text.height());
}

void NoticeBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ground(palette()));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void NoticeBar::focusMoved(QWidget* from, const QWidget* to) {
    if (to == action_ && from && !isAncestorOf(from)) formerFocus_ = from;
}

} // namespace mkl
