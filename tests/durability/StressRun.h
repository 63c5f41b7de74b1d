#pragma once
// Several programs that work on one database at full speed, and the same steps in a row.
#include "StressWorker.h"
#include "support/SharedMemory.h"

#include <atomic>
#include <functional>
#include <sys/types.h>
#include <vector>

namespace mkl {

class StressRun {
public:
    static constexpr int maxRounds = 1000, maxPrograms = 64;

    /// Of commands, by all programs.
    struct Figures {
        int stored = 0; ///< committed
        int stale = 0;  ///< of these, from a screen that was no longer true
        qint64 reports = 0;
        Long failure = 0;        ///< the number of one of them
        qint64 milliseconds = 0; ///< from the moment when all programs had read their panes
    };

    StressRun(QString file, quint32 seed, int rounds, std::vector<StressRole> roles);

    /// Each program in a process of its own. Fails the test where one of them broke off or misses articles.
    void together();
    /// All in this process, in the order in which they came to the database; that must be as it was before. Fails the
    /// test where a step finds or leaves it otherwise than at the first time.
    void inARow() const;
    Figures figures() const;

private:
    struct Log {
        int count = 0;
        StressStep steps[2 * maxRounds];
        char complaint[200] = {};
    };
    struct Shared {
        std::atomic<int> ready = 0;
        Log logs[maxPrograms];
    };

    pid_t start(const StressRole& role);
    void work(const StressRole& role, Log& log) const;
    std::vector<StressStep> inOrder() const;

    const QString file_;
    const quint32 seed_;
    const int rounds_;
    const std::vector<StressRole> roles_;
    SharedMemory<Shared> shared_;
    qint64 milliseconds_ = 0;
};

} // namespace mkl
