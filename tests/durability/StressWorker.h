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
};

class StressWorker {
public:
    /// Which articles a program adds and takes out: those with its own half of the keys, or all of them.
    enum class Articles : quint8 { Own, All };

    /// Native statements that make a file count the commits.
    static QByteArray counter();

    StressWorker(ScriptedWorld& world, const QString& file, int who, quint32 seed, Articles articles);
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
    const int who_;
    const quint32 seed_;
    const Articles articles_;
    std::mt19937 random_;
    Long category_ = 0;
    StressStep step_;
    bool hasBegun_ = false; ///< the last statement began a transaction
    Pairs pairs_;           ///< of its own articles, as it was told
};

} // namespace mkl
