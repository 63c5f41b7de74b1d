#include "StressRun.h"

#include <QElapsedTimer>
#include <algorithm>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace mkl {

StressRun::StressRun(QString file, quint32 seed, int rounds, std::vector<StressRole> roles)
    : file_(std::move(file))
    , seed_(seed)
    , rounds_(rounds)
    , roles_(std::move(roles)) {}

void StressRun::together() {
    std::vector<pid_t> children;
    for (const StressRole& role : roles_)
        children.push_back(start(role));
    while (shared_->ready < static_cast<int>(roles_.size()) && waitpid(-1, nullptr, WNOHANG | WNOWAIT) == 0)
        sched_yield();
    QElapsedTimer time;
    time.start();
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    }
    milliseconds_ = time.elapsed();
    for (const StressRole& role : roles_) {
        EXPECT_STREQ(shared_->logs[role.who].complaint, "");
        EXPECT_EQ(shared_->logs[role.who].count, 2 * rounds_);
    }
}

// Nothing of the test's own process may run at the end of its copy.
pid_t StressRun::start(const StressRole& role) {
    const pid_t child = fork();
    if (child != 0) return child;
    Log& log = shared_->logs[role.who];
    try {
        work(role, log);
    } catch (const std::exception& failure) {
        std::strncpy(log.complaint, failure.what(), sizeof log.complaint - 1);
        ++shared_->ready;
    }
    _exit(0);
}

void StressRun::work(const StressRole& role, Log& log) const {
    ScriptedWorld world;
    StressWorker worker(world, file_, role, seed_);
    for (++shared_->ready; shared_->ready < static_cast<int>(roles_.size());)
        sched_yield();
    for (int round = 0; round < rounds_; ++round) {
        log.steps[log.count++] = worker.read(round);
        log.steps[log.count++] = worker.act(round);
    }
    const QByteArray complaint = worker.complaint().toUtf8();
    std::strncpy(log.complaint, complaint.constData(), sizeof log.complaint - 1);
}

// What stores nothing saw the database as the commit before it left that. Groups do not meet: one comes behind the
// other.
std::vector<StressStep> StressRun::inOrder() const {
    std::vector<StressStep> steps;
    for (const StressRole& role : roles_) {
        const Log& log = shared_->logs[role.who];
        steps.insert(steps.end(), log.steps, log.steps + log.count);
    }
    std::vector<Long> groups(maxPrograms);
    for (const StressRole& role : roles_)
        groups[static_cast<size_t>(role.who)] = role.group;
    std::ranges::stable_sort(steps, {}, [&](const StressStep& step) {
        return std::tuple(groups[static_cast<size_t>(step.who)], step.to, !step.commits());
    });
    return steps;
}

StressRun::Figures StressRun::figures() const {
    Figures result;
    result.milliseconds = milliseconds_;
    for (const StressRole& role : roles_) {
        const Log& log = shared_->logs[role.who];
        for (int i = 1; i < log.count; i += 2) {
            result.stored += log.steps[i].commits();
            result.stale += log.steps[i].commits() && log.steps[i].from != log.steps[i - 1].to;
            result.reports += log.steps[i].reports;
            if (log.steps[i].reports > 0) result.failure = log.steps[i].failure;
        }
    }
    return result;
}

void StressRun::inARow() const {
    ScriptedWorld world;
    std::vector<std::unique_ptr<StressWorker>> workers(maxPrograms);
    for (const StressRole& role : roles_)
        workers[static_cast<size_t>(role.who)] = std::make_unique<StressWorker>(world, file_, role, seed_);
    for (const StressStep& step : inOrder()) {
        StressWorker& worker = *workers[static_cast<size_t>(step.who)];
        const StressStep again = step.isRead ? worker.read(step.round) : worker.act(step.round);
        ASSERT_EQ(again.to, step.to) << "program " << step.who << ", round " << step.round;
    }
}

} // namespace mkl
