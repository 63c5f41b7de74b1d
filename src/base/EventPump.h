#pragma once
// Serving the message queue in the middle of a long read. Whoever calls it must expect that the
// control was closed meanwhile.

namespace mkl {

class EventPump {
public:
    virtual ~EventPump() = default;
    virtual void serve() = 0;
};

/// The pump in force: the application's event loop unless another was set.
EventPump& eventPump();
/// Puts another pump in force and returns the former one; nullptr restores the event loop. The caller keeps ownership.
EventPump* setEventPump(EventPump* pump);

/// Serves the queue once.
inline void doEvents() {
    eventPump().serve();
}

} // namespace mkl
