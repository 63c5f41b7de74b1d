#pragma once
// The time of day as every part of the system reads it; tests put their own in.

namespace mkl {

class Clock {
public:
    virtual ~Clock() = default;
    /// Local date and time in days since 1899-12-30, whole seconds.
    virtual double now() const = 0;
};

/// The clock in force; the system's unless another was set.
Clock& clock();
/// Puts another clock in force and returns the former one; nullptr restores the system's. The caller keeps ownership.
Clock* setClock(Clock* clock);

} // namespace mkl
