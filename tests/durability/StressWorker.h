#pragma once
// A program that works at random in the categories of a catalogue: it reads a category's list, then gives a command
// for what it sees there. What it does follows from the seed, its number, the round and its screen alone, so that the
// same can be done again one step after the other.
#include "CommandHost.h"

#include <QByteArray>
#include <random>
#include <set>

namespace mkl {

/// A step of a program and when it was: by the number of commits before and behind it.
struct StressStep {
    int who = 0;
    int round = 0;
    bool isRead = false;
    qint64 from = 0;
    qint64 to = 0;

    bool commits() const { return from != to; }

    qint64 reports = 0; ///< failures that the user was told
    Long failure = 0;   ///< the number of the last of them
};

/// Which of several programs one is.
struct StressRole {
    /// Which articles it adds and takes out: those with its own part of the keys, or all of them.
    enum class Articles : quint8 { Own, All };

    int who = 0;
    int programs = 2;
    Articles articles = Articles::Own;
    QList<Long> categories = {41, 42, 43};
    bool sharesCategories = true;
    Long group = 1; ///< of the programs that work in these categories; their commits are counted
};

class StressWorker {
public:
    /// Native statements, in the language of files, that make a database count the commits of so many groups.
    static QString counter(Long groups);

    StressWorker(ScriptedWorld& world, const QString& file, StressRole role, quint32 seed);
    ~StressWorker();
    Q_DISABLE_COPY_MOVE(StressWorker)

    /// Both steps of a round. The first reads again until nobody stored anything meanwhile.
    StressStep read(int round);
    StressStep act(int round);

    /// What is wrong with its own articles in the file, after all it was told; empty if nothing.
    QString complaint() const;

private:
    using Pairs = std::set<std::pair<Long, Long>>; ///< article and category

    Long pick(Long count) { return static_cast<Long>(random_() % static_cast<quint32>(count)); }
    void begin(int round, quint32 step);
    Long someCategory() { return role_.categories[pick(static_cast<Long>(role_.categories.size()))]; }
    void noteFailures();
    void observe(QByteArrayView native);
    qint64 commits() const;
    bool isMine(Long article) const;
    QList<Long> ownRows() const;
    void moveRow();
    void swapRows();
    void sortRows();
    void addArticles();
    void moveArticles();
    void deleteRows();
    void answerPosition();
    Pairs storedPairs() const;

    ScriptedWorld& world_;
    CommandHost host_;
    const StressRole role_;
    const quint32 seed_;
    std::mt19937 random_;
    Long category_ = 0;
    StressStep step_;
    bool hasBegun_ = false; ///< the last statement began a transaction
    Pairs pairs_;           ///< of its own articles, as it was told
};

} // namespace mkl
