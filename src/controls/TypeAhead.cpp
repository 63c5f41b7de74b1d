#include "controls/TypeAhead.h"

#include <QApplication>

#include <algorithm>

namespace mkl {

bool TypeAhead::isRunning() const {
    return !typed_.isEmpty() && sinceLast_.elapsed() < QApplication::keyboardInputInterval();
}

TypeAhead::Search TypeAhead::type(const QString& letters) {
    if (letters.isEmpty()) return {};
    if (!isRunning()) typed_.clear();
    typed_ += letters.toLower();
    sinceLast_.start();
    const bool oneLetter = std::all_of(typed_.cbegin(), typed_.cend(), [this](QChar c) { return c == typed_.front(); });
    return oneLetter ? Search{typed_.left(1), true} : Search{typed_, false};
}

} // namespace mkl
