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
    // A range of nothing would show Qt's busy indicator.
    setRange(min_, std::max(min_ + 1, max_));
    QProgressBar::setValue(value_);
}

} // namespace mkl
