// docs/dialect.md tells what the dialect knows: neither more nor less than the tables of the code.
#include "base/Texts.h"
#include "jet/functions/Aggregates.h"
#include "jet/functions/Functions.h"
#include "support/DocsPage.h"
#include "support/Printing.h"

using namespace jet;
using namespace Qt::StringLiterals;

namespace {

// What the expression captures in the first cells of the tables there.
QStringList firstCells(const QString& heading, const QRegularExpression& captured) {
    QStringList found;
    const QStringList lines = mkl::sectionOf(u"dialect.md"_s, heading).split(u'\n');
    for (const QString& line : lines) {
        if (!line.startsWith(u"| ")) continue;
        const QString cell = line.section(u'|', 1, 1);
        for (auto match = captured.globalMatch(cell); match.hasNext();)
            found.append(match.next().captured(1));
    }
    return found;
}

const QRegularExpression call(u"`(\\w+)\\("_s);

} // namespace

TEST(Documentation, NamesEveryFunction) {
    QStringList known;
    for (const Function& function : functions())
        known.append(function.name.toString());
    EXPECT_EQ(firstCells(u"Functions"_s, call), known);
}

TEST(Documentation, NamesEveryAggregate) {
    QStringList known, told = firstCells(u"Aggregates"_s, call);
    for (const Aggregate& aggregate : aggregates())
        if (!aggregate.name.isEmpty()) known.append(aggregate.name.toString()); // else no statement can call it
    told.removeDuplicates();
    told.sort();
    known.sort();
    EXPECT_EQ(told, known);
}

TEST(Documentation, TellsErrorsThatExist) {
    const QStringList numbers = firstCells(u"Errors"_s, QRegularExpression(u"^ (\\d+) $"_s));
    EXPECT_GT(numbers.size(), 50);
    const QString unknown = mkl::text(mkl::TextId::UnknownRunTimeError, {u"@"_s});
    for (const QString& number : numbers) {
        QString none = unknown;
        EXPECT_NE(mkl::runTimeText(number.toInt()), none.replace(u'@', number)) << number.toStdString();
    }
}
