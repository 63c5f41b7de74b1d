#pragma once
// A clock that stands still, in force as long as it lives.
#include "base/Clock.h"

#include <QtGlobal>

namespace mkl {

class StandingClock final : public Clock {
public:
    explicit StandingClock(double time)
        : time_(time)
        , former_(setClock(this)) {}
    ~StandingClock() override { setClock(former_); }
    Q_DISABLE_COPY_MOVE(StandingClock)

    double now() const override { return time_; }

private:
    double time_;
    Clock* former_;
};

} // namespace mkl
