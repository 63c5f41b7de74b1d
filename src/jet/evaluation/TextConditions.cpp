#include "jet/evaluation/TextConditions.h"

#include "jet/evaluation/Conditions.h"
#include "jet/functions/Collation.h"
#include "jet/functions/Like.h"

namespace jet {

namespace {

/// Asks the bytes of a text; whatever else the column holds is asked as a value.
class TextColumnCondition : public Evaluator {
public:
    explicit TextColumnCondition(int column)
        : column_(column) {}

    Variant value(const RowValues& row) const final { return fromTruth(truth(row)); }
    Truth truth(const RowValues& row) const final {
        if (const auto text = row.utf8(column_)) return meets(*text);
        const Variant value = row.value(column_);
        return value.isNull() ? Truth() : meets(value);
    }
    bool isTrue(const RowValues& row) const final {
        if (const auto text = row.utf8(column_)) return meets(*text);
        const Variant value = row.value(column_);
        return !value.isNull() && meets(value);
    }

private:
    virtual bool meets(QByteArrayView utf8) const = 0;
    virtual bool meets(const Variant& value) const = 0;

    int column_;
};

class LikeText final : public TextColumnCondition {
public:
    LikeText(int column, const QString& pattern)
        : TextColumnCondition(column)
        , pattern_(pattern) {}

private:
    bool meets(QByteArrayView utf8) const override { return pattern_.matchesUtf8(utf8); }
    bool meets(const Variant& value) const override { return pattern_.matches(value.toText()); }

    LikePattern pattern_;
};

class ComparesWithText final : public TextColumnCondition {
public:
    ComparesWithText(int column, Op op, const Variant& other)
        : TextColumnCondition(column)
        , op_(op)
        , other_(other)
        , utf8_(other.toText().toUtf8()) {}

private:
    bool meets(QByteArrayView utf8) const override {
        const int order = compareUtf8({utf8.data(), static_cast<size_t>(utf8.size())},
                                      {utf8_.constData(), static_cast<size_t>(utf8_.size())});
        return jet::meets(op_, order);
    }
    bool meets(const Variant& value) const override { return jet::meets(op_, compareValues(value, other_)); }

    Op op_;
    Variant other_;
    QByteArray utf8_;
};

} // namespace

EvaluatorPtr makeTextCondition(const Binary& binary, const Evaluator& left, const Evaluator& right) {
    const int column = left.textColumn();
    const Variant* const constant = right.constant();
    if (column < 0 || !constant || constant->isNull()) return {};
    if (binary.op == Op::Like) return std::make_unique<LikeText>(column, constant->toText());
    const bool compares = isComparison(binary.op) && binary.comparison == Comparison::Collated && constant->isText();
    return compares ? std::make_unique<ComparesWithText>(column, binary.op, *constant) : nullptr;
}

} // namespace jet
