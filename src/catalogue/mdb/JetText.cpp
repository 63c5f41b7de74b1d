#include "catalogue/mdb/JetText.h"

namespace mkl {

namespace {

QChar unitAt(QByteArrayView bytes, qsizetype at) {
    const auto low = static_cast<uchar>(bytes[at]), high = static_cast<uchar>(bytes[at + 1]);
    return QChar(static_cast<char16_t>(low | high << 8));
}

std::optional<QString> decodePlain(QByteArrayView bytes) {
    if (bytes.size() % 2 != 0) return {};
    QString text(bytes.size() / 2, Qt::Uninitialized);
    QChar* end = text.data();
    for (qsizetype at = 0; at < bytes.size(); at += 2)
        *end++ = unitAt(bytes, at);
    return text;
}

std::optional<QString> decodeCompressed(QByteArrayView bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* end = text.data();
    bool latin1 = true;
    for (qsizetype at = 0; at < bytes.size();) {
        if (bytes[at] == '\0') {
            latin1 = !latin1;
            ++at;
        } else if (latin1) {
            *end++ = QLatin1Char(bytes[at++]);
        } else if (at + 1 < bytes.size()) {
            *end++ = unitAt(bytes, at);
            at += 2;
        } else {
            return {};
        }
    }
    text.truncate(end - text.data());
    return text;
}

} // namespace

std::optional<QString> decodeJetText(QByteArrayView bytes) {
    const bool compressed = bytes.startsWith("\xFF\xFE");
    auto text = compressed ? decodeCompressed(bytes.sliced(2)) : decodePlain(bytes);
    if (text && !text->isValidUtf16()) text.reset();
    return text;
}

} // namespace mkl
