#pragma once
#include <QRadioButton>

namespace mkl {

/// One of several options of which the user chooses one; those within the same parent belong together. The Tab key
/// stops at the one that holds, arrow keys go on from there.
class OptionButton final : public QRadioButton {
    Q_OBJECT

public:
    explicit OptionButton(QWidget* parent, const QString& caption = {});

    bool Value() const { return isChecked(); }
    void setValue(bool value) { setChecked(value); }

Q_SIGNALS:
    /// The option was chosen, by the user or by code. Nothing is raised for one that was chosen before.
    void Click();

private:
    void takeTabStop();
};

} // namespace mkl
