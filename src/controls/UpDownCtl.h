#pragma once
#include "base/types.h"

#include <QSpinBox>

namespace mkl {

/// A number field with up and down arrows: typing, wheel, Up and Down by one, PageUp and PageDown by ten. Anything
/// outside of Minimum to Maximum becomes the nearer of them, at once when set, and when the field is left or read if it
/// was typed. An emptied field goes back to its former value.
class UpDownCtl final : public QSpinBox {
    Q_OBJECT

public:
    explicit UpDownCtl(QWidget* parent = nullptr);

    Long Minimum() const { return minimum(); }
    Long Maximum() const { return maximum(); }
    /// The number shown; what was typed so far counts.
    Long Value() const;
    bool Enabled() const { return !testAttribute(Qt::WA_ForceDisabled); }

    void stepBy(int steps) override;

protected:
    StepEnabled stepEnabled() const override;
    QValidator::State validate(QString& input, int& position) const override;
    void fixup(QString& input) const override;
    int valueFromText(const QString& text) const override;
    QString textFromValue(int value) const override;
};

} // namespace mkl
