#include "base/Clock.h"

#include "base/DateTime.h"

#include <QDateTime>

namespace mkl {

namespace {

class SystemClock final : public Clock {
public:
    // Programs ask for every row that they write; the system looks up the time zone each time.
    double now() const override {
        thread_local qint64 lastSecond = -1;
        thread_local double lastTime = 0;
        const qint64 second = QDateTime::currentSecsSinceEpoch();
        if (second != lastSecond) {
            lastTime = localTime();
            lastSecond = second;
        }
        return lastTime;
    }

private:
    static double localTime() {
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
