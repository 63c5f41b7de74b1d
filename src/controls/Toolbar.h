#pragma once
#include "controls/ButtonRow.h"

#include <QString>
#include <vector>

namespace mkl {

/// A row of buttons that are reached by key.
class Toolbar final : public ButtonRow {
    Q_OBJECT

public:
    /// A button of a Toolbar with its key.
    struct Button {
        QString Key;
        DialogButton* widget; ///< owned by the bar
    };

    explicit Toolbar(QWidget* parent)
        : ButtonRow(parent) {}

    /// A key twice is error 35602.
    DialogButton& addButton(const QString& key, const QString& caption, const QString& toolTipText);
    /// The button of that key, without regard to case; error 35601 when there is none.
    DialogButton& Buttons(const QString& key) const;

Q_SIGNALS:
    void ButtonClick(const QString& Key);

private:
    DialogButton* find(const QString& key) const;

    std::vector<Button> keyed_;
};

} // namespace mkl
