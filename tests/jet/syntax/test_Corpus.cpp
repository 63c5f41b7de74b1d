// Statements with the error that each of them must raise, one per line: number (0 for none), tab, statement.
#include "jet/FakeCatalogue.h"

#include "jet/syntax/Shape.h"
#include "support/Printing.h"

#include <QDir>
#include <QFile>
#include <random>

using namespace jet;
using namespace Qt::StringLiterals;
using mkl::errorOf;

namespace {

struct Line {
    QString place;
    mkl::Long error;
    QString statement;
};

std::vector<Line> corpus() {
    const QDir folder(QStringLiteral(MKL_SOURCE_DIR "/tests/corpus"));
    std::vector<Line> lines;
    for (const QString& name : folder.entryList({u"statements_*.txt"_s}, QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        int number = 0;
        while (!file.atEnd()) {
            const QString line = QString::fromUtf8(file.readLine()).chopped(1);
            ++number;
            if (line.isEmpty() || line.startsWith(u'#')) continue;
            const qsizetype tab = line.indexOf(u'\t');
            lines.push_back({u"%1:%2"_s.arg(name).arg(number), line.first(tab).toInt(), line.sliced(tab + 1)});
        }
    }
    return lines;
}

// Pieces of statements, thrown together without sense.
QString soup(std::mt19937& random) {
    static const QStringList pieces = {
        u"SELECT"_s,     u"*"_s,      u"FROM"_s,   u"WHERE"_s, u"lng"_s,      u"txt"_s,      u"TYPEN"_s, u"ARTKAT"_s,
        u"="_s,          u"<>"_s,     u"("_s,      u")"_s,     u","_s,        u"1"_s,        u"-"_s,     u"'a'"_s,
        u"#5/1/2001#"_s, u"And"_s,    u"Or"_s,     u"Not"_s,   u"In"_s,       u"Between"_s,  u"Like"_s,  u"Is"_s,
        u"Null"_s,       u"ORDER"_s,  u"BY"_s,     u"GROUP"_s, u"HAVING"_s,   u"INNER"_s,    u"JOIN"_s,  u"LEFT"_s,
        u"ON"_s,         u"AS"_s,     u"x"_s,      u"Max"_s,   u"Count(*)"_s, u"IIf"_s,      u"Left"_s,  u"INSERT"_s,
        u"INTO"_s,       u"VALUES"_s, u"UPDATE"_s, u"SET"_s,   u"DELETE"_s,   u";"_s,        u"."_s,     u"!"_s,
        u"[Order]"_s,    u"&"_s,      u"^"_s,      u"Mod"_s,   u"TOP"_s,      u"DISTINCT"_s, u"UNION"_s, u"True"_s,
        u"2.5"_s,        u"DESC"_s,   u"Now()"_s,  u"Imp"_s,   u"\\"_s,       u"{"_s,        u"'"_s,     u"["_s};
    std::uniform_int_distribution<qsizetype> pick(0, pieces.size() - 1), length(1, 30);
    QStringList taken;
    for (qsizetype left = length(random); left > 0; --left)
        taken.append(pieces[pick(random)]);
    return taken.join(u' ');
}

// A sound statement with a few of its characters changed.
QString damaged(QString text, std::mt19937& random) {
    std::uniform_int_distribution<int> changes(1, 4), kind(0, 3), letter(0, 127);
    for (int left = changes(random); left > 0 && !text.isEmpty(); --left) {
        const auto place = std::uniform_int_distribution<qsizetype>(0, text.size() - 1)(random);
        switch (kind(random)) {
        case 0: text.remove(place, 1); break;
        case 1: text.insert(place, QChar(letter(random))); break;
        case 2: text[place] = QChar(letter(random)); break;
        default: text += text.sliced(place);
        }
    }
    return text;
}

// The road of any text: a plan or a run-time error, nothing else.
void compile(const QString& text) {
    errorOf([&] {
        const Shape shape = shapeOf(text);
        const Plan plan = planOf(text);
        for (const Parameter& parameter : plan.parameters)
            ASSERT_LT(parameter.literal, shape.literals.size()) << text.toStdString();
        for (const FixedLiteral& fixed : plan.fixedLiterals)
            ASSERT_EQ(fixed.value, shape.literals[fixed.literal]) << text.toStdString();
    });
    errorOf([&] { checkCriterion(text); });
}

} // namespace

TEST(Corpus, EachStatementRaisesItsError) {
    const auto lines = corpus();
    ASSERT_GT(lines.size(), 100U);
    for (const Line& line : lines) {
        QString description;
        mkl::Long number = 0;
        try {
            planOf(line.statement);
        } catch (const mkl::RunTimeError& error) {
            number = error.number();
            description = error.description();
        }
        EXPECT_EQ(number, line.error) << line.place.toStdString() << ": " << line.statement.toStdString() << "\n  "
                                      << description.toStdString();
    }
}

TEST(Corpus, SoupOfTokens) {
    std::mt19937 random(20010501);
    for (int i = 0; i < 4000; ++i) {
        compile(soup(random));
        compile(u"SELECT lng FROM TYPEN WHERE "_s + soup(random));
    }
}

TEST(Corpus, DamagedStatements) {
    std::mt19937 random(19991231);
    const auto lines = corpus();
    for (int round = 0; round < 20; ++round)
        for (const Line& line : lines)
            compile(damaged(line.statement, random));
}
