// Two programs that work on the same categories at full speed.
#include "StressRun.h"
#include "TwoPrograms.h"
#include "support/CatalogueFixture.h"
#include "support/CheckFindings.h"
#include "support/Printing.h"

#include <QElapsedTimer>
#include <iostream>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

using Articles = StressRole::Articles;

class Stress : public testing::TestWithParam<JournalMode> {
protected:
    Stress()
        : file_(FaultFile::CopyOf{drawn().file()}, GetParam())
        , seed_(qEnvironmentVariableIntValue("MKL_SEED") ? qEnvironmentVariableIntValue("MKL_SEED") : 20261121)
        , rounds_(isFullRun() ? StressRun::maxRounds : 40) {
        std::cout << "MKL_SEED=" << seed_ << ", " << rounds_ << " rounds\n";
    }

    static const CatalogueFixture& drawn() {
        static const CatalogueFixture catalogue(shopPicture(20));
        static const bool counts = (catalogue.run(StressWorker::counter(1)), true);
        Q_UNUSED(counts)
        return catalogue;
    }

    StressRun both(Articles articles) const {
        return {file_.path(), seed_, rounds_, {{.who = 0, .articles = articles}, {.who = 1, .articles = articles}}};
    }

    FaultFile file_;
    const quint32 seed_;
    const int rounds_;
};

} // namespace

// Who adds an article that nobody else touches depends on its own screen alone; then all can be done again in a row.
TEST_P(Stress, WhatIsLeftEqualsTheSameStepsInARow) {
    QElapsedTimer time;
    time.start();
    StressRun run = both(Articles::Own);
    ASSERT_NO_FATAL_FAILURE(run.together());
    const QByteArray left = file_.content();
    const QSet<QString> findings = findingsOf(file_.path());
    const qint64 together = time.restart();
    file_.restore();
    ASSERT_NO_FATAL_FAILURE(run.inARow());
    EXPECT_EQ(file_.content().toStdString(), left.toStdString());
    EXPECT_EQ(findingsOf(file_.path()), findings);
    const auto figures = run.figures();
    EXPECT_GT(figures.stored, rounds_ / 2);
    std::cout << figures.stored << " commands that stored, " << figures.stale
              << " of them from a screen that was no longer true, " << together << " ms, again in a row "
              << time.elapsed() << " ms\n";
}

TEST_P(Stress, NoPairIsDoubledWhereBothAddTheSame) {
    StressRun run = both(Articles::All);
    ASSERT_NO_FATAL_FAILURE(run.together());
    for (const QString& finding : findingsOf(file_.path()))
        EXPECT_TRUE(finding.startsWith(u"articles"_s) || finding.startsWith(u"gap"_s)) << finding.toStdString();
    file_.expectSound();
}

INSTANTIATE_TEST_SUITE_P(Journal, Stress, testing::ValuesIn(journalModes));
