#include "jet/functions/Aggregates.h"

#include "base/RunTimeError.h"
#include "jet/functions/Operators.h"

#include <array>
#include <cmath>
#include <vector>

namespace jet {

namespace {

using mkl::Variant;

constexpr mkl::Long severalRows = 3354;

// Whether the row with these keys comes before the other one; Null first.
bool precedes(Arguments a, Arguments b) {
    for (size_t i = 0; i < a.size(); ++i) {
        if (a[i].isNull() != b[i].isNull()) return a[i].isNull();
        if (a[i].isNull()) continue;
        if (const int order = compareValues(a[i], b[i])) return order < 0;
    }
    return false;
}

// The value of the first or of the last row in the order of their keys.
template<bool last>
class EdgeRow final : public Accumulator {
public:
    void add(Arguments arguments) override {
        const Arguments keys = arguments.subspan(1);
        if (any_ && precedes(keys, keys_) == last) return;
        any_ = true;
        value_ = arguments[0];
        keys_.assign(keys.begin(), keys.end());
    }
    Variant result() const override { return value_; }

private:
    bool any_ = false;
    Variant value_;
    std::vector<Variant> keys_;
};

// Variance in one pass: mean and sum of squared distances are corrected with each value.
template<bool sample, bool root>
class Spread final : public Accumulator {
public:
    void add(Arguments arguments) override {
        if (arguments[0].isNull()) return;
        const double value = arguments[0].toDouble();
        ++count_;
        const double distance = value - mean_;
        mean_ += distance / count_;
        squares_ += distance * (value - mean_);
    }
    Variant result() const override {
        const double divisor = sample ? count_ - 1 : count_;
        if (divisor < 1) return {};
        const double variance = squares_ / divisor;
        return root ? std::sqrt(variance) : variance;
    }

private:
    double count_ = 0, mean_ = 0, squares_ = 0;
};

/// The value of a subquery that may have one row at most.
class OnlyRow final : public Accumulator {
public:
    void add(Arguments arguments) override {
        if (any_) mkl::throwError(severalRows);
        any_ = true;
        value_ = arguments[0];
    }
    Variant result() const override { return value_; }

private:
    bool any_ = false;
    Variant value_;
};

template<class Kind>
std::unique_ptr<Accumulator> create() {
    return std::make_unique<Kind>();
}

ColumnType same(ColumnType argument) {
    return argument;
}
ColumnType whole(ColumnType) {
    return ColumnType::Int;
}
ColumnType floating(ColumnType) {
    return ColumnType::Double;
}
ColumnType amount(ColumnType argument) {
    return argument == ColumnType::Currency ? ColumnType::Currency : ColumnType::Double;
}

constexpr std::array table = {
    Aggregate{u"Avg", "avg", amount, nullptr, true, false},
    Aggregate{u"Count", "count", whole, nullptr, false, false},
    Aggregate{u"First", "mkl_first", same, create<EdgeRow<false>>, false, true},
    Aggregate{u"Last", "mkl_last", same, create<EdgeRow<true>>, false, true},
    Aggregate{u"Max", "max", same, nullptr, false, false},
    Aggregate{u"Min", "min", same, nullptr, false, false},
    Aggregate{u"", "mkl_only", same, create<OnlyRow>, false, false},
    Aggregate{u"StDev", "mkl_stdev", floating, create<Spread<true, true>>, true, false},
    Aggregate{u"StDevP", "mkl_stdevp", floating, create<Spread<false, true>>, true, false},
    Aggregate{u"Sum", "sum", amount, nullptr, true, false},
    Aggregate{u"Var", "mkl_var", floating, create<Spread<true, false>>, true, false},
    Aggregate{u"VarP", "mkl_varp", floating, create<Spread<false, false>>, true, false},
};

} // namespace

std::span<const Aggregate> aggregates() {
    return table;
}

const Aggregate* findAggregate(QStringView name) {
    for (const Aggregate& aggregate : table)
        if (name.compare(aggregate.name, Qt::CaseInsensitive) == 0) return &aggregate;
    return nullptr;
}

} // namespace jet
