#include "jet/evaluation/ListCondition.h"

#include "jet/functions/Collation.h"

#include <algorithm>
#include <cmath>

namespace jet {

using Type = Variant::Type;

namespace {

constexpr size_t manyItems = 8;

enum class Kind : quint8 { Null, Number, Date, Text, Other };

Kind kindOf(const Variant& value) {
    switch (value.type()) {
    case Type::Null: return Kind::Null;
    case Type::Date: return Kind::Date;
    case Type::Text: return Kind::Text;
    case Type::Binary: return Kind::Other;
    default: return Kind::Number;
    }
}

bool precedes(const QString& a, const QString& b) {
    return compare(a, b) < 0;
}

class ListCondition final : public Evaluator {
public:
    ListCondition(EvaluatorPtr value, Kind kind, const std::vector<EvaluatorPtr>& items)
        : value_(std::move(value))
        , kind_(kind) {
        for (const EvaluatorPtr& item : items)
            add(*item->constant());
        std::ranges::sort(numbers_);
        std::ranges::sort(texts_, precedes);
    }

    Variant value(const RowValues& row) const override { return fromTruth(truth(row)); }
    Truth truth(const RowValues& row) const override {
        const Variant value = value_->value(row);
        if (value.isNull()) return {};
        if (contains(value)) return true;
        return hasNull_ ? Truth() : Truth(false);
    }

private:
    void add(const Variant& item) {
        if (item.isNull())
            hasNull_ = true;
        else if (kind_ == Kind::Text)
            texts_.push_back(item.toText());
        else
            numbers_.push_back(numberOf(item));
    }
    double numberOf(const Variant& value) const {
        return kind_ == Kind::Date ? onTimeline(value.toDouble()) : value.toDouble();
    }
    bool contains(const Variant& value) const {
        if (kindOf(value) != kind_) return containsOther(value);
        return kind_ == Kind::Text ? std::ranges::binary_search(texts_, value.toText(), precedes)
                                   : std::ranges::binary_search(numbers_, numberOf(value));
    }
    // What a column holds against its type.
    bool containsOther(const Variant& value) const {
        const auto equals = [&value](const Variant& item) { return compareValues(value, item) == 0; };
        const auto equalsNumber = [&](double number) {
            return equals(kind_ == Kind::Date ? Variant::date(number) : Variant(number));
        };
        return std::ranges::any_of(texts_, equals) || std::ranges::any_of(numbers_, equalsNumber);
    }

    EvaluatorPtr value_;
    Kind kind_;
    std::vector<double> numbers_;
    std::vector<QString> texts_;
    bool hasNull_ = false;
};

} // namespace

EvaluatorPtr makeListCondition(EvaluatorPtr& value, const std::vector<EvaluatorPtr>& items) {
    if (items.size() < manyItems) return {};
    Kind kind = Kind::Null;
    for (const EvaluatorPtr& item : items) {
        if (!item->constant()) return {};
        const Kind found = kindOf(*item->constant());
        if (kind == Kind::Null) kind = found;
        if (found == Kind::Other || (found != Kind::Null && found != kind)) return {};
    }
    if (kind == Kind::Null) return {};
    return std::make_unique<ListCondition>(std::move(value), kind, items);
}

double onTimeline(double date) {
    const double day = std::trunc(date);
    return day + std::fabs(date - day);
}

} // namespace jet
