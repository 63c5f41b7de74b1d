// A criterion over rows in memory gives the rows, or the error, that it gives in the engine's WHERE.
#include "Numbered.h"
#include "SmallDatabase.h"
#include "base/Clock.h"
#include "jet/Compiler.h"
#include "jet/evaluation/Criterion.h"

#include <QStringList>
#include <vector>

namespace {

using namespace Qt::StringLiterals;
using mkl::Variant;

class StandingClock final : public mkl::Clock {
public:
    StandingClock() { mkl::setClock(this); }
    double now() const override { return 36526.75; }
};

/// The rows of TYPEN.
class Rows final : public jet::RowValues {
public:
    explicit Rows(dao::Database& database) {
        static constexpr jet::ColumnType types[] = {jet::ColumnType::Int,  jet::ColumnType::Double,
                                                    jet::ColumnType::Text, jet::ColumnType::Boolean,
                                                    jet::ColumnType::Date, jet::ColumnType::Currency};
        const auto all = database.OpenRecordset(u"SELECT * FROM TYPEN ORDER BY lng"_s, dao::dbOpenSnapshot);
        for (mkl::Long i = 0; i < all->FieldCount(); ++i)
            columns_.append({all->Fields(i).Name(), types[i], u"TYPEN"_s, all->Fields(i).Name()});
        for (; !all->Eof(); all->MoveNext()) {
            std::vector<Variant> row;
            for (mkl::Long i = 0; i < all->FieldCount(); ++i)
                row.push_back(all->value(i));
            texts_.append(row[2].toText().toUtf8());
            rows_.push_back(std::move(row));
        }
    }

    Variant value(int column) const override { return rows_[row_][static_cast<size_t>(column)]; }
    std::optional<QByteArrayView> utf8(int column) const override {
        if (!value(column).isText()) return {};
        return texts_[static_cast<qsizetype>(row_)];
    }
    const QList<jet::OutputColumn>& columns() const { return columns_; }

    /// The keys of the rows that meet it.
    QStringList meeting(const jet::Criterion& criterion) {
        QStringList keys;
        for (row_ = 0; row_ < rows_.size(); ++row_)
            if (criterion.holds(*this)) keys.append(value(0).toText());
        return keys;
    }

private:
    std::vector<std::vector<Variant>> rows_;
    QList<QByteArray> texts_;
    QList<jet::OutputColumn> columns_;
    size_t row_ = 0;
};

QStringList byEngine(dao::Database& database, const QString& criterion) {
    QStringList keys;
    const auto rows = database.OpenRecordset(u"SELECT lng FROM TYPEN WHERE "_s + criterion, dao::dbOpenSnapshot);
    for (; !rows->Eof(); rows->MoveNext())
        keys.append(rows->value(0).toText());
    return keys;
}

// Numbers of a find and of a statement for the same mistake.
mkl::Long asInFind(mkl::Long number) {
    return number == 3075 || number == 3126 || number == 3145 ? 3077 : number == 3061 ? 3070 : number;
}

template<class Answer>
QString answered(Answer&& answer) {
    QString result;
    const mkl::Long error = fuzz::numberOf([&] { result = answer().join(u' '); });
    return error == 0 ? result : u"error %1"_s.arg(asInFind(error));
}

// What means something else in a WHERE clause on purpose: subqueries, a broken pattern, numbers drawn at random; and
// what nests deeper than the engine's parser goes.
bool isComparable(const QString& text, const QString& engine) {
    return engine != u"error 93" && engine != u"error 3360" && !text.contains(u"select"_s, Qt::CaseInsensitive) &&
           !text.contains(u"rnd"_s, Qt::CaseInsensitive);
}

// Either may look at a term first that the other one does not come to: then one raises, and the other one too or finds
// nothing that this could contradict.
bool mayDiffer(const QString& engine, const QString& memory) {
    const bool engineRaises = engine.startsWith(u"error"), memoryRaises = memory.startsWith(u"error");
    return (engineRaises && memoryRaises) || (engineRaises && memory.isEmpty()) || (memoryRaises && engine.isEmpty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const StandingClock clock;
    static fuzz::SmallDatabase small;
    static Rows rows(small.database());
    const QString text = fuzz::textOf(data, size);
    const mkl::Long syntax = fuzz::numberOf([&] { jet::checkCriterion(text); });
    const QString memory = answered([&] { return rows.meeting(jet::Criterion::parse(text, rows.columns())); });
    if (syntax != 0) {
        if (!memory.startsWith(u"error")) fuzz::finding(u"no criterion, but rows: "_s + memory);
        return 0;
    }
    const QString engine = answered([&] { return byEngine(small.database(), text); });
    fuzz::accepted = !engine.startsWith(u"error");
    if (memory != engine && isComparable(text, engine) && !mayDiffer(engine, memory))
        fuzz::finding(u"engine '%1', memory '%2'"_s.arg(engine, memory));
    return 0;
}
