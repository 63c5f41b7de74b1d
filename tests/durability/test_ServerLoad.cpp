// Sixty programs on one server: fifty in categories of their own, ten in the same one.
#include "StressRun.h"
#include "support/CatalogueFixture.h"
#include "support/CheckFindings.h"
#include "support/FaultFile.h"
#include "support/Printing.h"
#include "support/ServerRows.h"

#include <iostream>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

constexpr int alone = 50, shared = 10, articlesOfEach = 8;
constexpr Long sharedCategory = 40, firstCategory = 100;

/// One shared category and two for each of the others; all articles in a category of nobody's, so that the pool shows
/// them.
QString picture() {
    QStringList articles, some;
    for (int article = 1; article <= (alone + shared) * articlesOfEach; ++article) {
        articles.append(u"%1 Artikel %2"_s.arg(article).arg(QChar(u'A' + article * 7 % 23)));
        // Each program begins with one of its own; those of the shared category have the highest numbers.
        if (article % (alone + shared) >= alone && article <= alone + shared) some.append(articles.last());
    }
    QString result = u"39 Lager: %1\n40 Aktion: %2\n"_s.arg(articles.join(u", "_s), some.join(u", "_s));
    for (int who = 0; who < alone; ++who)
        result += u"%1 Rechts: %3\n%2 Links\n"_s.arg(firstCategory + 2 * who)
                      .arg(firstCategory + 2 * who + 1)
                      .arg(articles[who + (alone + shared) - 1]);
    return result;
}

std::vector<StressRole> roles(StressRole::Articles articles) {
    std::vector<StressRole> result;
    for (int who = 0; who < alone + shared; ++who) {
        StressRole role{.who = who, .programs = alone + shared, .articles = articles};
        const Long first = firstCategory + 2 * who;
        role.categories = who < alone ? QList<Long>{first, first + 1} : QList<Long>{sharedCategory};
        role.sharesCategories = who >= alone;
        role.group = who < alone ? 2 + who : 1;
        result.push_back(role);
    }
    return result;
}

class ServerLoad : public testing::Test {
protected:
    ServerLoad()
        : catalogue_(picture()) {
        catalogue_.run(StressWorker::counter(1 + alone));
        ServerRows(catalogue_.file()).keep();
    }

    /// What must not differ from one run to another: keys of assignments and times do.
    QStringList positions() const {
        QStringList result;
        const auto rows = catalogue_.database()->OpenRecordset(
            u"SELECT [Kategorie-Schlüssel], [Order], [Artikel-Schlüssel] FROM ARTKAT"_s, dao::dbOpenForwardOnly);
        for (; !rows->Eof(); rows->MoveNext())
            result.append(u"%1 %2 %3"_s.arg(rows->value(0).toText(), rows->value(1).toText(), rows->value(2).toText()));
        result.sort();
        return result;
    }

    const CatalogueFixture catalogue_;
    const quint32 seed_ =
        qEnvironmentVariableIntValue("MKL_SEED") ? qEnvironmentVariableIntValue("MKL_SEED") : 20261122;
    const int rounds_ = isFullRun() ? 100 : 6;
};

} // namespace

TEST_F(ServerLoad, PositionsAreThoseOfTheSameStepsInARow) {
    StressRun run(catalogue_.file(), seed_, rounds_, roles(StressRole::Articles::Own));
    ASSERT_NO_FATAL_FAILURE(run.together());
    const StressRun::Figures figures = run.figures();
    const QStringList left = positions();
    const QSet<QString> findings = findingsOf(catalogue_.file());
    for (const QString& finding : findings)
        EXPECT_FALSE(finding.startsWith(u"pair"_s) || finding.contains(u"missing"_s)) << finding.toStdString();
    ServerRows(catalogue_.file()).restore();
    ASSERT_NO_FATAL_FAILURE(run.inARow());
    EXPECT_EQ(positions(), left);
    EXPECT_EQ(figures.reports, 0) << figures.failure;
    EXPECT_GT(figures.stored, rounds_ * 10);
    std::cout << "MKL_SEED=" << seed_ << ": " << alone << " programs in categories of their own, " << shared
              << " in the same one, " << rounds_ << " rounds: " << figures.stored << " edits, "
              << figures.stored * 1000 / std::max<qint64>(1, figures.milliseconds) << " a second, " << figures.stale
              << " from a screen that was no longer true, " << figures.reports << " failures\n";
}
