#pragma once

namespace dao {

/// Rows that are to be read as they are now but were not read yet. The connection has them read before it changes
/// anything.
class PendingRead {
public:
    /// An error is kept for whoever asks for the rows.
    virtual void readNow() noexcept = 0;

protected:
    ~PendingRead() = default;
};

} // namespace dao
