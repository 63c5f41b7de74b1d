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
    setValue(value_);
}

void ProgressBar::setMax(Long max) {
    max_ = max;
    setValue(value_);
}

void ProgressBar::setValue(Long value) {
    value_ = std::clamp(value, min_, std::max(min_, max_));
    refresh();
}

void ProgressBar::refresh() {
    // The range from 0 to 0 would show Qt's busy indicator.
    const bool nothing = min_ == 0 && max_ <= 0;
    setRange(min_, nothing ? 1 : std::max(min_, max_));
    QProgressBar::setValue(value_);
}

} // namespace mkl
