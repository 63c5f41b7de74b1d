#include "TwoPrograms.h"

#include "support/CatalogueFixture.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

namespace mkl {

using namespace Qt::StringLiterals;

int Choices::choose() {
    if (place_ == made_.size()) made_.push_back(0);
    return made_[place_++];
}

bool Choices::next() {
    place_ = 0;
    while (!made_.empty() && made_.back() == 1)
        made_.pop_back();
    if (made_.empty()) return false;
    made_.back() = 1;
    return true;
}

namespace {

/// One run of both.
class Turns {
public:
    using State = SteppedProcess::State;

    Turns(const std::array<const BrowserCommand*, 2>& commands, const QString& file)
        : first_(*commands[0], file)
        , second_(*commands[1], file) {}

    bool isOver() const { return first_.state() == State::Ended && second_.state() == State::Ended; }
    bool canGoOn(int who) const {
        const State state = program(who).state();
        return state == State::AtStatement || (state == State::Waiting && mayTry_[who]);
    }
    /// True if it would have to wait and gives up.
    bool step(int who, bool patient) {
        SteppedProcess& running = program(who);
        const QByteArray statement = running.statement();
        order_ += (who == 0 ? "1: " : "2: ") + statement + '\n';
        running.step();
        const bool waits = running.state() == State::Waiting;
        if (waits && !patient) running.giveUp();
        mayTry_[who] = false;
        if (statement.startsWith("BEGIN") && !waits && firstToLock_ < 0) firstToLock_ = who;
        if (statement == "COMMIT" || statement == "ROLLBACK" || running.state() == State::Ended)
            mayTry_[1 - who] = true;
        return waits && !patient;
    }

    int firstToLock() const { return firstToLock_; }
    const QByteArray& order() const { return order_; }
    QByteArray result(int who) const { return program(who).result(); }

private:
    SteppedProcess& program(int who) { return who == 0 ? first_ : second_; }
    const SteppedProcess& program(int who) const { return who == 0 ? first_ : second_; }

    SteppedProcess first_, second_;
    std::array<bool, 2> mayTry_ = {};
    int firstToLock_ = -1;
    QByteArray order_;
};

} // namespace

TwoPrograms::TwoPrograms(const BrowserCommand& first, const BrowserCommand& second, JournalMode mode)
    : commands_{&first, &second}
    , file_(FaultFile::CopyOf{CatalogueFixture(first.picture).file()}, mode)
    , serial_{runSerially(0), runSerially(1)} {
    for (const int who : {0, 1})
        EXPECT_EQ(serial_[static_cast<size_t>(who)].firstToLock, who) << first.name << " and " << second.name;
}

TwoPrograms::Left TwoPrograms::run(Choices& choices, int switches, bool patient) const {
    file_.restore();
    Left left;
    {
        Turns turns(commands_, file_.path());
        int running = choices.choose();
        while (!turns.isOver()) {
            const int other = 1 - running;
            if (!turns.canGoOn(running)) {
                if (!turns.canGoOn(other)) throw std::logic_error("both wait:\n" + turns.order().toStdString());
                running = other;
            } else if (switches > 0 && turns.canGoOn(other) && choices.choose() == 1) {
                running = other;
                --switches;
            }
            left.gaveUp = turns.step(running, patient) || left.gaveUp;
        }
        left.results = {turns.result(0), turns.result(1)};
        left.firstToLock = turns.firstToLock();
        left.order = turns.order();
    }
    left.content = file_.content();
    return left;
}

TwoPrograms::Left TwoPrograms::runSerially(int first) const {
    Choices choices;
    if (first == 1) {
        choices.choose();
        choices.next();
    }
    return run(choices, 0, true);
}

QByteArray TwoPrograms::contentAfter(int alone) const {
    file_.restore();
    {
        SteppedProcess program(*commands_[static_cast<size_t>(alone)], file_.path());
        while (program.state() != SteppedProcess::State::Ended)
            program.step();
    }
    return file_.content();
}

// Which choices there are shows in a run alone: what is left out are whole branches behind a choice.
template<class Check>
qint64 TwoPrograms::eachOrder(int switches, bool patient, PointRange range, Check&& check) {
    qint64 orders = 0;
    Choices choices;
    do {
        const Left left = run(choices, switches, patient);
        const testing::ScopedTrace trace(__FILE__, __LINE__,
                                         testing::Message()
                                             << commands_[0]->name << " and " << commands_[1]->name << "\n"
                                             << left.order.toStdString());
        check(left);
        file_.expectSound();
        ++orders;
        for (qint64 skipped = 1; skipped < range.step; ++skipped)
            if (!choices.next()) return orders;
    } while (!testing::Test::HasFailure() && choices.next());
    return orders;
}

qint64 TwoPrograms::waiting(int switches, PointRange range) {
    return eachOrder(switches, true, range, [this](const Left& left) {
        ASSERT_GE(left.firstToLock, 0);
        if (!commands_[0]->oneTransaction || !commands_[1]->oneTransaction) {
            const auto isSilent = [](const QByteArray& result) { return result.startsWith(';'); };
            const bool isSerial = left.content == serial_[0].content || left.content == serial_[1].content;
            EXPECT_TRUE(isSerial || !std::ranges::all_of(left.results, isSilent)) << left.content.toStdString();
            return;
        }
        const Left& serial = serial_[static_cast<size_t>(left.firstToLock)];
        EXPECT_EQ(left.content.toStdString(), serial.content.toStdString());
        EXPECT_EQ(left.results, serial.results);
    });
}

qint64 TwoPrograms::givingUp(PointRange range) {
    if (!commands_[0]->oneTransaction || !commands_[1]->oneTransaction) return 0; // some rows are stored, some not
    const std::array alone{contentAfter(0), contentAfter(1)};
    return eachOrder(1, false, range, [&](const Left& left) {
        ASSERT_GE(left.firstToLock, 0);
        const auto first = static_cast<size_t>(left.firstToLock);
        if (!left.gaveUp) {
            EXPECT_EQ(left.content.toStdString(), serial_[first].content.toStdString());
            return;
        }
        EXPECT_EQ(left.content.toStdString(), alone[first].toStdString());
        EXPECT_TRUE(left.results[1 - first].endsWith(" 3260; 0; 0")) << left.results[1 - first].toStdString();
        EXPECT_EQ(left.results[first], serial_[first].results[first]);
    });
}

void TwoPrograms::expectRealWait() {
    file_.restore();
    const auto end = [](SteppedProcess& program) {
        while (program.state() != SteppedProcess::State::Ended)
            program.step();
    };
    {
        SteppedProcess first(*commands_[0], file_.path(), SteppedProcess::Locks::Wait);
        SteppedProcess second(*commands_[1], file_.path(), SteppedProcess::Locks::Wait);
        first.step();   // has the lock
        second.start(); // wants it
        end(first);
        second.await();
        end(second);
        EXPECT_EQ(first.result(), serial_[0].results[0]);
        EXPECT_EQ(second.result(), serial_[0].results[1]);
    }
    EXPECT_EQ(file_.content().toStdString(), serial_[0].content.toStdString());
}

} // namespace mkl
