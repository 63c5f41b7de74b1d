#pragma once
// The message queue as a test serves it.
#include "base/EventPump.h"

#include <functional>
#include <utility>

namespace mkl {

/// Serves nothing by itself, so that a test says what happens when the queue is served.
class ScriptedPump final : public EventPump {
public:
    explicit ScriptedPump(std::function<void()> action = {})
        : whenServed(std::move(action))
        , former_(setEventPump(this)) {}
    ~ScriptedPump() override { setEventPump(former_); }
    Q_DISABLE_COPY_MOVE(ScriptedPump)

    void serve() override {
        if (whenServed) whenServed();
    }

    std::function<void()> whenServed;

private:
    EventPump* former_;
};

} // namespace mkl
