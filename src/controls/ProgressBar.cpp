#include "controls/ProgressBar.h"

#include <algorithm>

namespace mkl {

ProgressBar::ProgressBar(QWidget* parent)
    : QProgressBar(parent) {
    setTextVisible(false);
    refresh();
}

void ProgressBar::setMin(Long min) {
    min_ = min;
    value_ = std::clamp(value_, min_, std::max(min_, max_));
    refresh();
}

void ProgressBar::setMax(Long max) {
    max_ = max;
    value_ = std::clamp(value_, min_, std::max(min_, max_));
    refresh();
}

void ProgressBar::setValue(Long value) {
    value_ = std::clamp(value, min_, std::max(min_, max_));
    if (isWorthShowing()) refresh();
}

// A long read counts in steps that nobody sees, and Qt's bar takes longer over each than the read.
bool ProgressBar::isWorthShowing() const {
    constexpr qint64 visibleSteps = 500;
    const qint64 range = qint64(max_) - min_;
    const qint64 step = std::abs(qint64(value_) - QProgressBar::value());
    return value_ == min_ || value_ == max_ || step * visibleSteps >= range;
}

void ProgressBar::refresh() {
    // The range from 0 to 0 would show Qt's busy indicator.
    const bool nothing = min_ == 0 && max_ <= 0;
    setRange(min_, nothing ? 1 : std::max(min_, max_));
    QProgressBar::setValue(value_);
}

} // namespace mkl
