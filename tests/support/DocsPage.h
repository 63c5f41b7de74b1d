#pragma once
// What a page of docs/ says, for tests that hold it to its word.
#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <stdexcept>

namespace mkl {

/// The part of the page below that heading of second order; throws where there is none.
inline QString sectionOf(const QString& page, const QString& heading) {
    QFile file(QStringLiteral(MKL_SOURCE_DIR "/docs/") + page);
    const QString title = QStringLiteral("\n## ") + heading + u'\n';
    const QString text = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    const qsizetype begin = text.indexOf(title);
    if (begin < 0) throw std::runtime_error("no such section: " + heading.toStdString());
    const qsizetype end = text.indexOf(QStringLiteral("\n## "), begin + title.size() - 1);
    return text.mid(begin + title.size(), end < 0 ? -1 : end + 1 - begin - title.size());
}

/// The blocks of code there, each with its line ends.
inline QStringList codeBlocksOf(const QString& page, const QString& heading) {
    static const QRegularExpression fence(QStringLiteral("^```\\n"), QRegularExpression::MultilineOption);
    QStringList blocks = sectionOf(page, heading).split(fence);
    for (qsizetype place = blocks.size() - 1; place >= 0; place -= 2)
        blocks.removeAt(place); // the prose between them
    return blocks;
}

} // namespace mkl
