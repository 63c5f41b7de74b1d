#pragma once
#include <QRadioButton>

namespace mkl {

/// One of several options of which the user chooses one; those within the same parent belong together.
class OptionButton final : public QRadioButton {
    Q_OBJECT

public:
    explicit OptionButton(QWidget* parent, const QString& caption = {})
        : QRadioButton(caption, parent) {
        connect(this, &QRadioButton::toggled, this, [this](bool value) {
            if (value) Q_EMIT Click();
        });
    }

    bool Value() const { return isChecked(); }
    void setValue(bool value) { setChecked(value); }

Q_SIGNALS:
    /// The option was chosen, by the user or by code. Nothing is raised for one that was chosen before.
    void Click();
};

} // namespace mkl
