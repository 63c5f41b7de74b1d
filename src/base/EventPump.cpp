#include "base/EventPump.h"

#include <QCoreApplication>

namespace mkl {

namespace {

class ApplicationPump final : public EventPump {
public:
    void serve() override {
        if (QCoreApplication::instance()) QCoreApplication::processEvents();
    }
};

ApplicationPump applicationPump;
EventPump* current = &applicationPump;

} // namespace

EventPump& eventPump() {
    return *current;
}

EventPump* setEventPump(EventPump* pump) {
    EventPump* former = current;
    current = pump ? pump : &applicationPump;
    return former;
}

} // namespace mkl
