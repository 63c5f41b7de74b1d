#pragma once
#include <QByteArrayView>
#include <QString>
#include <optional>

namespace mkl {

/// A text as the format stores it since 2000: UTF-16, or, behind the mark FF FE, runs of Latin-1 and UTF-16 that a
/// zero byte separates. Nothing where the bytes cannot be such a text.
std::optional<QString> decodeJetText(QByteArrayView bytes);

} // namespace mkl
