#include "base/Clock.h"

#include "base/DateTime.h"

#include <QDateTime>

namespace mkl {

namespace {

class SystemClock final : public Clock {
public:
    double now() const override {
        const QDateTime local = QDateTime::currentDateTime();
        const QDate day = local.date();
        const QTime time = local.time();
        return dateFromParts({day.year(), day.month(), day.day(), time.hour(), time.minute(), time.second()})
            .value_or(0.0);
    }
};

SystemClock systemClock;
Clock* current = &systemClock;

} // namespace

Clock& clock() {
    return *current;
}

Clock* setClock(Clock* clock) {
    Clock* former = current;
    current = clock ? clock : &systemClock;
    return former;
}

} // namespace mkl
