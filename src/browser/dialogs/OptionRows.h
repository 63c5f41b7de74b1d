#pragma once
#include "controls/Label.h"
#include "controls/OptionButton.h"

#include <QFrame>
#include <array>

namespace mkl {

/// The inner picture box of a form with the options 1 to 3, each with its label. The label of the option that was
/// clicked is dark red and bold; a click on a label clicks its option. Accessors with another index are error 9.
class OptionRows final : public QFrame {
    Q_OBJECT

public:
    static constexpr Long Count = 3;

    explicit OptionRows(QWidget* parent);

    OptionButton& Opt(Long Index) const;
    Label& lbl(Long Index) const;

    /// Index of the option that is set; 0 if none is.
    Long chosen() const;
    /// What a click on the option does to the labels.
    void Opt_Click(Long Index) const;
    /// Shows or hides an option with its label.
    void setRowVisible(Long index, bool visible) const;

    /// Places the rows in a width in twips. Each label reaches room twips below its text.
    void arrange(Single width, Single room) const;
    /// Lower edge of the last visible label.
    Single lastBottom() const;

private:
    struct Row {
        OptionButton* option = nullptr; // children of the box
        Label* label = nullptr;
    };
    const Row& row(Long index) const;

    std::array<Row, Count> rows_;
};

} // namespace mkl
