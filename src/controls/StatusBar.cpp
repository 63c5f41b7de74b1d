#include "controls/StatusBar.h"

#include "base/RunTimeError.h"
#include "controls/ToolTip.h"
#include "controls/Twips.h"

#include <QMouseEvent>
#include <QStyle>

#include <algorithm>

namespace mkl {

namespace {

constexpr Single defaultPanelWidth = 1440;
constexpr int textMargin = 4; // pixels

} // namespace

StatusPanel::StatusPanel(const QString& key, StatusBar& bar)
    : QLabel(&bar)
    , bar_(bar)
    , key_(key)
    , width_(defaultPanelWidth) {
    setObjectName(key);
    setTextFormat(Qt::PlainText);
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setIndent(textMargin);
}

void StatusPanel::setText(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    elide();
}

void StatusPanel::setWidth(Single twips) {
    width_ = twips;
    bar_.arrange();
}

void StatusPanel::setVisible(bool visible) {
    QLabel::setVisible(visible);
    bar_.arrange();
}

void StatusPanel::elide() {
    const int room = contentsRect().width() - 2 * textMargin;
    const QString shown = fontMetrics().elidedText(text_, Qt::ElideRight, std::max(0, room));
    QLabel::setText(shown);
    setToolTip(shown == text_ ? QString() : plainToolTip(text_));
}

void StatusPanel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    elide();
}

void StatusPanel::mousePressEvent(QMouseEvent* event) {
    clicks_.press(*event);
}

void StatusPanel::mouseReleaseEvent(QMouseEvent* event) {
    if (clicks_.release(*event, *this)) Q_EMIT bar_.PanelClick(this);
}

void StatusPanel::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Q_EMIT bar_.PanelDblClick(this);
}

StatusBar::StatusBar(QWidget* parent)
    : QFrame(parent)
    , overlay_(new QLabel(this)) {
    overlay_->setObjectName(QStringLiteral("Overlay"));
    overlay_->setTextFormat(Qt::PlainText);
    overlay_->setIndent(textMargin);
    overlay_->setAutoFillBackground(true);
    overlay_->setAttribute(Qt::WA_TransparentForMouseEvents);
    overlay_->hide();
}

QString StatusBar::Overlay() const {
    return accessibleDescription();
}

void StatusBar::setOverlay(const QString& text) {
    if (text == Overlay()) return;
    setAccessibleDescription(text);
    overlay_->setGeometry(contentsRect());
    const int room = overlay_->width() - 2 * textMargin;
    overlay_->setText(fontMetrics().elidedText(text, Qt::ElideRight, std::max(0, room)));
    overlay_->raise();
    overlay_->setVisible(!text.isEmpty());
}

void StatusBar::setRoomAtEnd(Single twips) {
    if (twips == roomAtEnd_) return;
    roomAtEnd_ = twips;
    arrange();
}

StatusPanel& StatusBar::addPanel(const QString& key) {
    if (find(key)) throwError(err::KeyNotUnique, {key});
    auto* const panel = new StatusPanel(key, *this);
    panels_.push_back(panel);
    panel->show();
    return *panel;
}

StatusPanel& StatusBar::Panels(const QString& key) const {
    StatusPanel* const panel = find(key);
    if (!panel) throwError(err::ElementNotFound, {key});
    return *panel;
}

StatusPanel* StatusBar::find(const QString& key) const {
    const auto found = std::find_if(panels_.begin(), panels_.end(), [&](const StatusPanel* panel) {
        return panel->Key().compare(key, Qt::CaseInsensitive) == 0;
    });
    return found == panels_.end() ? nullptr : *found;
}

QSize StatusBar::sizeHint() const {
    return {20 * textMargin, fontMetrics().height() + 2 * (textMargin + frameWidth())};
}

// From left to right; the last visible panel takes what is left.
void StatusBar::arrange() {
    const auto last =
        std::find_if(panels_.rbegin(), panels_.rend(), [](const auto* panel) { return panel->Visible(); });
    QRect inside = contentsRect();
    inside.setWidth(std::max(0, inside.width() - pixelsX(roomAtEnd_)));
    double left = 0; // in twips, so that the edges meet those of controls of the same widths
    for (StatusPanel* panel : panels_) {
        if (!panel->Visible()) continue;
        const int from = std::max(inside.left(), pixelsX(left));
        left += panel->Width();
        const int end = inside.left() + inside.width();
        const int to = panel == *last ? end : std::min(end, pixelsX(left));
        panel->setGeometry(from, inside.top(), std::max(0, to - from), inside.height());
    }
}

void StatusBar::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    arrange();
}

void StatusBar::mousePressEvent(QMouseEvent* event) {
    clicks_.press(*event);
}

void StatusBar::mouseReleaseEvent(QMouseEvent* event) {
    if (clicks_.release(*event, *this)) Q_EMIT Click();
}

void StatusBar::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Q_EMIT DblClick();
}

} // namespace mkl
