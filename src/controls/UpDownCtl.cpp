#include "controls/UpDownCtl.h"

#include <algorithm>

namespace mkl {

namespace {

constexpr int mostDigits = 10;

bool isNumber(const QString& text) {
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    return text.size() <= mostDigits && std::all_of(text.begin(), text.end(), isDigit);
}

} // namespace

UpDownCtl::UpDownCtl(QWidget* parent)
    : QSpinBox(parent) {
    setAccelerated(true);
    setKeyboardTracking(false); // a half-typed number is none yet
}

Long UpDownCtl::Value() const {
    const QString typed = cleanText();
    return typed.isEmpty() ? value() : valueFromText(typed);
}

// A step counts from the number that was typed.
void UpDownCtl::stepBy(int steps) {
    interpretText();
    QSpinBox::stepBy(steps);
}

QAbstractSpinBox::StepEnabled UpDownCtl::stepEnabled() const {
    const Long number = Value();
    return (number < maximum() ? StepUpEnabled : StepNone) | (number > minimum() ? StepDownEnabled : StepNone);
}

// A number beyond the maximum can be typed; it is brought back when the field is left.
QValidator::State UpDownCtl::validate(QString& input, int& position) const {
    const QString trimmed = input.trimmed();
    if (trimmed.size() != input.size()) {
        input = trimmed;
        position = std::min(position, static_cast<int>(input.size()));
    }
    if (!isNumber(input)) return QValidator::Invalid;
    if (input.isEmpty()) return QValidator::Intermediate;
    const qlonglong number = input.toLongLong();
    return number >= minimum() && number <= maximum() ? QValidator::Acceptable : QValidator::Intermediate;
}

void UpDownCtl::fixup(QString& input) const {
    if (!input.isEmpty()) input = textFromValue(valueFromText(input));
}

int UpDownCtl::valueFromText(const QString& text) const {
    return static_cast<int>(std::clamp<qlonglong>(text.toLongLong(), minimum(), maximum()));
}

QString UpDownCtl::textFromValue(int value) const {
    return QString::number(value);
}

} // namespace mkl
