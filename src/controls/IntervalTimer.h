#pragma once
#include "base/types.h"

#include <QObject>
#include <QTimer>

namespace mkl {

/// A timer that goes on until it is disabled.
class IntervalTimer final : public QObject {
    Q_OBJECT

public:
    explicit IntervalTimer(QObject* parent = nullptr);

    Long Interval() const { return interval_; } ///< milliseconds; 0 never elapses
    /// Begins to count anew. A negative interval is error 5.
    void setInterval(Long milliseconds);

    bool Enabled() const { return enabled_; }
    /// True begins to count anew.
    void setEnabled(bool enabled);

    /// Does what the elapsed time does.
    void tick();

Q_SIGNALS:
    void Timer();

private:
    void restart();

    QTimer timer_;
    Long interval_ = 0;
    bool enabled_ = false;
};

} // namespace mkl
