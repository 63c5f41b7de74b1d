#pragma once
#include "base/types.h"

#include <QCheckBox>

namespace mkl {

/// A check box whose value is a number: 1 checked, 0 not.
class CheckBox final : public QCheckBox {
    Q_OBJECT

public:
    explicit CheckBox(QWidget* parent, const QString& caption = {})
        : QCheckBox(caption, parent) {}

    Integer Value() const { return isChecked() ? 1 : 0; }
    void setValue(Integer value) { setChecked(value != 0); }
};

} // namespace mkl
