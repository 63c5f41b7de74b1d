#include "jet/model/Raise.h"

#include "base/RunTimeError.h"
#include "base/Texts.h"

namespace jet {

namespace {

thread_local QStringView textInWork;

// Views of other texts are told by their address.
bool isInWork(QStringView piece) {
    const std::less_equal<const char16_t*> notAfter;
    const auto* const begin = textInWork.utf16();
    const auto* const at = piece.utf16();
    return begin && at && notAfter(begin, at) && notAfter(at + piece.size(), begin + textInWork.size());
}

qsizetype offsetOf(QStringView piece) {
    return piece.utf16() - textInWork.utf16();
}

QStringView withBrackets(QStringView piece) {
    qsizetype begin = offsetOf(piece), end = begin + piece.size();
    const auto before = textInWork.first(begin);
    const auto behind = textInWork.sliced(end);
    qsizetype left = before.size(), right = 0;
    while (left > 0 && before[left - 1].isSpace())
        --left;
    while (right < behind.size() && behind[right].isSpace())
        ++right;
    if (left > 0 && before[left - 1] == u'[') begin = left - 1;
    if (right < behind.size() && behind[right] == u']') end += right + 1;
    return textInWork.sliced(begin, end - begin);
}

// A full stop at the end goes behind the place.
QString withPlace(QString description, const mkl::ErrorPlace& place) {
    const bool stopped = description.endsWith(u'.');
    if (stopped) description.chop(1);
    const QString position = QString::number(place.position + 1);
    description += place.token.isEmpty() ? text(mkl::TextId::ErrorPlaceAtEnd, {position})
                                         : text(mkl::TextId::ErrorPlace, {place.token, position});
    return stopped ? description + u'.' : description;
}

} // namespace

TextInWork::TextInWork(QStringView text)
    : former_(std::exchange(textInWork, text)) {}

TextInWork::~TextInWork() {
    textInWork = former_;
}

void raiseAt(mkl::Long number, QStringView where, std::initializer_list<QString> arguments) {
    if (!isInWork(where)) mkl::throwError(number, arguments);
    const QStringView piece = where.isEmpty() ? where : withBrackets(where);
    mkl::ErrorPlace place{excerpt(piece), offsetOf(piece)};
    QString description = withPlace(mkl::runTimeText(number, arguments), place);
    throw mkl::RunTimeError(number, std::move(description), {}, std::move(place));
}

QStringView spanOf(QStringView first, QStringView last) {
    if (!isInWork(first) || !isInWork(last) || offsetOf(first) > offsetOf(last)) return last;
    return textInWork.sliced(offsetOf(first), offsetOf(last) + last.size() - offsetOf(first));
}

QString excerpt(QStringView text) {
    constexpr qsizetype longest = 60;
    QString piece = text.size() <= longest ? text.toString() : text.first(longest).toString() + u'…';
    for (QChar& c : piece) // a message is one line, and does not end at a NUL
        if (c < u' ') c = QChar(u'␀' + c.unicode());
    return piece;
}

} // namespace jet
