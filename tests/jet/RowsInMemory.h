#pragma once
// Rows of values for criteria and sort orders.
#include "jet/evaluation/SortOrder.h"

#include <vector>

namespace jet {

class RowsInMemory final : public RowReader {
public:
    explicit RowsInMemory(std::vector<std::vector<mkl::Variant>> rows)
        : rows_(std::move(rows)) {}

    void moveTo(qsizetype row) override {
        row_ = static_cast<size_t>(row);
        for (const mkl::Variant& value : rows_[row_])
            utf8_.append(value.isText() ? value.toText().toUtf8() : QByteArray());
    }
    mkl::Variant value(int column) const override { return rows_[row_][static_cast<size_t>(column)]; }
    std::optional<QByteArrayView> utf8(int column) const override {
        const mkl::Variant& value = rows_[row_][static_cast<size_t>(column)];
        if (!value.isText()) return {};
        return utf8_[utf8_.size() - static_cast<qsizetype>(rows_[row_].size()) + column];
    }
    qsizetype size() const { return static_cast<qsizetype>(rows_.size()); }

private:
    std::vector<std::vector<mkl::Variant>> rows_;
    QList<QByteArray> utf8_;
    size_t row_ = 0;
};

} // namespace jet
