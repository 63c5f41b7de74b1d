#include "browser/dialogs/OptionRows.h"

#include "base/RunTimeError.h"
#include "browser/dialogs/DialogGeometry.h"
#include "controls/Extender.h"

#include <algorithm>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long darkRed = 128;
constexpr Single aboveRows = 60;
constexpr Single besideOption = 60;

} // namespace

OptionRows::OptionRows(QWidget* parent)
    : QFrame(parent) {
    for (Long index = 1; index <= Count; ++index) {
        auto* const option = new OptionButton(this);
        auto* const label = new Label(this);
        rows_[static_cast<size_t>(index - 1)] = {option, label};
        option->setObjectName(u"Opt%1"_s.arg(index));
        label->setObjectName(u"lbl%1"_s.arg(index));
        connect(option, &OptionButton::Click, this, [this, index] { Opt_Click(index); });
        connect(label, &Label::Click, option, [option] {
            option->setValue(true);
            option->setFocus();
        });
    }
}

const OptionRows::Row& OptionRows::row(Long index) const {
    if (index < 1 || index > Count) throwError(err::SubscriptOutOfRange);
    return rows_[static_cast<size_t>(index - 1)];
}

OptionButton& OptionRows::Opt(Long Index) const {
    return *row(Index).option;
}

Label& OptionRows::lbl(Long Index) const {
    return *row(Index).label;
}

Long OptionRows::chosen() const {
    for (Long index = 1; index <= Count; ++index)
        if (Opt(index).Value()) return index;
    return 0;
}

void OptionRows::Opt_Click(Long Index) const {
    const Label& clicked = lbl(Index);
    for (const Row& each : rows_) {
        const bool isClicked = each.label == &clicked;
        each.label->setForeColor(isClicked ? darkRed : 0);
        each.label->setFontBold(isClicked);
    }
}

void OptionRows::setRowVisible(Long index, bool visible) const {
    row(index).option->setVisible(visible);
    row(index).label->setVisible(visible);
}

// An option stands beside the first line of its label.
void OptionRows::arrange(Single width, Single room) const {
    Single top = aboveRows;
    for (const Row& each : rows_) {
        if (!Visible(*each.option)) continue;
        const Single button = naturalHeight(*each.option);
        const Single line = std::max(button, lineHeight(*each.label));
        place(*each.option, 0, top + (line - button) / 2);
        const Single left = right(*each.option) + besideOption;
        const Single textTop = top + (line - lineHeight(*each.label)) / 2;
        place(*each.label, left, textTop, width - left, each.label->TextHeight(width - left, true) + room);
        each.option->setAccessibleName(each.label->Caption());
        top = bottom(*each.label);
    }
}

Single OptionRows::lastBottom() const {
    Single last = 0;
    for (const Row& each : rows_)
        if (Visible(*each.label)) last = std::max(last, bottom(*each.label));
    return last;
}

} // namespace mkl
