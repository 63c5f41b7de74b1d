// Two programs that work on the same categories at full speed.
#include "StressWorker.h"
#include "TwoPrograms.h"
#include "support/CatalogueFixture.h"
#include "support/CheckFindings.h"
#include "support/Printing.h"
#include "support/SharedMemory.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <atomic>
#include <iostream>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

using Articles = StressWorker::Articles;

constexpr int maxRounds = 1000;

/// What one program did, in memory that both share with the test.
struct Log {
    int count = 0;
    StressStep steps[2 * maxRounds];
    char complaint[200] = {};
};

struct Shared {
    std::atomic<int> ready = 0;
    Log logs[2];
};

class Stress : public testing::TestWithParam<JournalMode> {
protected:
    Stress()
        : file_(FaultFile::CopyOf{drawn().file()}, GetParam())
        , seed_(qEnvironmentVariableIntValue("MKL_SEED") ? qEnvironmentVariableIntValue("MKL_SEED") : 20261121)
        , rounds_(isFullRun() ? maxRounds : 40) {
        std::cout << "MKL_SEED=" << seed_ << ", " << rounds_ << " rounds\n";
    }

    static const CatalogueFixture& drawn() {
        static const CatalogueFixture catalogue(shopPicture(20));
        static const bool counts = (catalogue.run(QString::fromUtf8(StressWorker::counter())), true);
        Q_UNUSED(counts)
        return catalogue;
    }

    void runBoth(Articles articles) {
        const pid_t children[] = {start(0, articles), start(1, articles)};
        for (const pid_t child : children) {
            int status = 0;
            ASSERT_EQ(waitpid(child, &status, 0), child);
            ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
        }
        for (const Log& log : shared_->logs) {
            EXPECT_STREQ(log.complaint, "");
            EXPECT_EQ(log.count, 2 * rounds_);
        }
    }

    /// The steps of both in the order in which they came to the file.
    std::vector<StressStep> inOrder() const {
        std::vector<StressStep> steps;
        for (const Log& log : shared_->logs)
            steps.insert(steps.end(), log.steps, log.steps + log.count);
        // What stores nothing saw the file as the commit before it left that.
        std::ranges::stable_sort(steps, {}, [](const StressStep& step) { return std::pair(step.to, !step.commits()); });
        return steps;
    }

    /// Commands that committed, and those before which the other program had done so since their screen was read.
    std::pair<int, int> storedAndStale() const {
        int stored = 0, stale = 0;
        for (const Log& log : shared_->logs)
            for (int i = 1; i < log.count; i += 2) {
                stored += log.steps[i].commits();
                stale += log.steps[i].commits() && log.steps[i].from != log.steps[i - 1].to;
            }
        return {stored, stale};
    }

    void replay(Articles articles) const {
        file_.restore();
        ScriptedWorld world;
        StressWorker first(world, file_.path(), 0, seed_, articles);
        StressWorker second(world, file_.path(), 1, seed_, articles);
        for (const StressStep& step : inOrder()) {
            StressWorker& worker = step.who == 0 ? first : second;
            const StressStep again = step.isRead ? worker.read(step.round) : worker.act(step.round);
            ASSERT_EQ(again.to, step.to) << "program " << step.who << ", round " << step.round;
        }
    }

    FaultFile file_;
    const quint32 seed_;
    const int rounds_;
    SharedMemory<Shared> shared_;

private:
    pid_t start(int who, Articles articles) {
        const pid_t child = fork();
        if (child != 0) return child;
        Log& log = shared_->logs[who];
        try {
            work(who, articles, log);
        } catch (const std::exception& failure) {
            std::strncpy(log.complaint, failure.what(), sizeof log.complaint - 1);
        }
        _exit(0);
    }

    void work(int who, Articles articles, Log& log) {
        ScriptedWorld world;
        StressWorker worker(world, file_.path(), who, seed_, articles);
        for (++shared_->ready; shared_->ready < 2;)
            sched_yield();
        for (int round = 0; round < rounds_; ++round) {
            log.steps[log.count++] = worker.read(round);
            log.steps[log.count++] = worker.act(round);
        }
        const QByteArray complaint = worker.complaint().toUtf8();
        std::strncpy(log.complaint, complaint.constData(), sizeof log.complaint - 1);
    }
};

} // namespace

// Who adds an article that nobody else touches depends on its own screen alone; then all can be done again in a row.
TEST_P(Stress, WhatIsLeftEqualsTheSameStepsInARow) {
    QElapsedTimer time;
    time.start();
    runBoth(Articles::Own);
    const QByteArray left = file_.content();
    const QSet<QString> findings = findingsOf(file_.path());
    const qint64 together = time.restart();
    ASSERT_NO_FATAL_FAILURE(replay(Articles::Own));
    EXPECT_EQ(file_.content().toStdString(), left.toStdString());
    EXPECT_EQ(findingsOf(file_.path()), findings);
    const auto [stored, stale] = storedAndStale();
    EXPECT_GT(stored, rounds_ / 2);
    std::cout << stored << " commands that stored, " << stale << " of them from a screen that was no longer true, "
              << together << " ms, again in a row " << time.elapsed() << " ms\n";
}

TEST_P(Stress, NoPairIsDoubledWhereBothAddTheSame) {
    runBoth(Articles::All);
    for (const QString& finding : findingsOf(file_.path()))
        EXPECT_TRUE(finding.startsWith(u"articles"_s) || finding.startsWith(u"gap"_s)) << finding.toStdString();
    file_.expectSound();
}

INSTANTIATE_TEST_SUITE_P(Journal, Stress, testing::ValuesIn(journalModes));
