#pragma once
// The one order of texts. It weighs, weakest last: base letters without case (ß as ss, æ and œ as two
// letters), accents, positions of hyphens and apostrophes. Trailing blanks do not count. Blank stands before
// punctuation, that before digits, those before letters. No locale of the system or of a server takes part.
#include <QByteArray>
#include <QStringView>
#include <string_view>

namespace jet {

/// Negative, 0 or positive.
int compare(QStringView a, QStringView b);
/// The same for UTF-8, as the engines hold texts.
int compareUtf8(std::string_view a, std::string_view b);

/// Bytes whose order (memcmp, the shorter one first) is that of the texts.
QByteArray sortKey(QStringView text);

} // namespace jet
