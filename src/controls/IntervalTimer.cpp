#include "controls/IntervalTimer.h"

#include "base/RunTimeError.h"

namespace mkl {

IntervalTimer::IntervalTimer(QObject* parent)
    : QObject(parent) {
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &IntervalTimer::tick);
}

void IntervalTimer::setInterval(Long milliseconds) {
    if (milliseconds < 0) throwError(err::InvalidArgument);
    interval_ = milliseconds;
    restart();
}

void IntervalTimer::setEnabled(bool enabled) {
    enabled_ = enabled;
    restart();
}

void IntervalTimer::restart() {
    if (enabled_ && interval_ > 0)
        timer_.start(interval_);
    else
        timer_.stop();
}

void IntervalTimer::tick() {
    if (enabled_ && interval_ > 0) Q_EMIT Timer();
}

} // namespace mkl
