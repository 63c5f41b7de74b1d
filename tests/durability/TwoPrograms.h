#pragma once
// Two programs on one file, each with one command, taking turns statement by statement in every order.
#include "SteppedProcess.h"
#include "support/FaultFile.h"

#include <array>
#include <vector>

namespace mkl {

/// The choices of one run, and from run to run all there are.
class Choices {
public:
    /// 0 or 1.
    int choose();
    /// Goes on to the next run; false when there was none other.
    bool next();

private:
    std::vector<int> made_;
    size_t place_ = 0;
};

/// Both read their panes before either command begins. Switches are counted where the program that runs could go on;
/// one that must wait for the other's lock gives way without.
class TwoPrograms {
public:
    TwoPrograms(const BrowserCommand& first, const BrowserCommand& second, JournalMode mode);

    /// Each order with at most so many switches; where not all are wanted, some from all over. What is stored and
    /// reported must be what one of the serial runs leaves: that in the order of their transactions. Gives the number
    /// of orders.
    qint64 waiting(int switches, PointRange range = {});
    /// The same, but whoever would have to wait gives up at once: it reports 3260 and leaves nothing.
    qint64 givingUp(PointRange range = {});
    /// The second waits in the engine itself until the first has ended.
    void expectRealWait();

private:
    struct Left {
        QByteArray content;
        std::array<QByteArray, 2> results;
        int firstToLock = -1;
        bool gaveUp = false; ///< the other one
        QByteArray order;    ///< of the statements, for a person to read
    };

    template<class Check>
    qint64 eachOrder(int switches, bool patient, PointRange range, Check&& check);
    Left run(Choices& choices, int switches, bool patient) const;
    Left runSerially(int first) const;
    QByteArray contentAfter(int alone) const;

    std::array<const BrowserCommand*, 2> commands_;
    FaultFile file_;
    std::array<Left, 2> serial_; ///< by who came first
};

} // namespace mkl
