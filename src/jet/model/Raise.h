#pragma once
// Errors that say where in a statement they stand.
#include "base/types.h"

#include <QString>
#include <initializer_list>

namespace jet {

/// Declares the text that this thread reads, as long as the object lives: views into it then have a place. The
/// outermost declaration of nested ones is restored at the end.
class TextInWork {
public:
    explicit TextInWork(QStringView text);
    ~TextInWork();
    TextInWork(const TextInWork&) = delete;
    TextInWork& operator=(const TextInWork&) = delete;

private:
    QStringView former_;
};

/// Raises the error at a piece of the text in work: the description ends with the piece and its place, counted from
/// 1, and RunTimeError::place() has both. An empty piece at the end of the text says that it ends too early. A name
/// without its brackets is shown with them. A piece of another text is raised without a place.
[[noreturn]] void raiseAt(mkl::Long number, QStringView where, std::initializer_list<QString> arguments = {});

/// The text from the beginning of the one piece to the end of the other; the second one if they do not stand in the
/// text in work in that order.
QStringView spanOf(QStringView first, QStringView last);

/// A piece of a statement, cut short for a message.
QString excerpt(QStringView text);

} // namespace jet
