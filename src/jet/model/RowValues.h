#pragma once
#include "base/Variant.h"

#include <QByteArrayView>
#include <optional>

namespace jet {

/// The values of the row under test, by number of the output column.
class RowValues {
public:
    virtual ~RowValues() = default;
    virtual mkl::Variant value(int column) const = 0;
    /// The UTF-8 of a text, without decoding it; nothing where value() is no text. Only asked of text columns.
    virtual std::optional<QByteArrayView> utf8(int /*column*/) const { return {}; }
};

} // namespace jet
