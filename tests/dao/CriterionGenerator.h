#pragma once
// Random criteria and rows: all operators and functions, values from the edges of their ranges.
#include <QString>
#include <random>

namespace dao {

class CriterionGenerator {
public:
    explicit CriterionGenerator(quint64 seed)
        : random_(seed) {}

    /// A condition over the columns of tableText(), nested as deep as told.
    QString condition(int depth);
    /// Expressions with commas between them, each perhaps descending.
    QString sortOrder();
    /// Native statements that make the table R with so many rows.
    QByteArray tableText(int rows);

private:
    enum Kind { Number, Text, Date };

    QString expression(Kind kind, int depth);
    QString leaf(Kind kind);
    QString number(int depth);
    QString text(int depth);
    QString date(int depth);
    QString call(Kind kind, int depth);
    QString argument(QChar code, int depth);
    QString comparison(int depth);
    QString literal(Kind kind);
    QString textLiteral();
    QString pattern();
    QByteArray nativeRow(int number);

    Kind anyKind() { return static_cast<Kind>(below(3)); }
    int below(int count) { return static_cast<int>(random_() % static_cast<quint64>(count)); }
    bool chance(int percent) { return below(100) < percent; }
    template<class T, size_t count>
    const T& oneOf(const T (&list)[count]) {
        return list[below(static_cast<int>(count))];
    }

    std::mt19937_64 random_;
};

} // namespace dao
