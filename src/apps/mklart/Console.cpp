#include "apps/mklart/Console.h"

#include "base/Texts.h"

#include <cstdio>
#include <filesystem>

namespace mkl {

namespace {

constexpr qint64 pauseMilliseconds = 100;

void write(std::FILE* stream, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    std::fwrite(utf8.constData(), 1, static_cast<std::size_t>(utf8.size()), stream);
}

/// Where there is no such name, nothing is shown; a redirected stream is a file or a pipe.
bool errorsGoToTerminal() {
    std::error_code ignored;
    return std::filesystem::is_character_file("/dev/stderr", ignored);
}

} // namespace

void printLine(const QString& line) {
    write(stdout, line + u'\n');
}

void complain(const QString& line) {
    std::fflush(stdout);
    write(stderr, line + u'\n');
}

ProgressLine::ProgressLine()
    : visible_(errorsGoToTerminal()) {}

ProgressLine::~ProgressLine() {
    if (width_ > 0) write({});
}

void ProgressLine::show(const QString& what, qint64 done, qint64 expected) {
    if (!visible_ || (sinceLast_.isValid() && sinceLast_.elapsed() < pauseMilliseconds)) return;
    sinceLast_.start();
    write(expected < 0 ? text(TextId::ToolProgress, {what, QString::number(done)})
                       : text(TextId::ToolProgressOf, {what, QString::number(done), QString::number(expected)}));
}

void ProgressLine::write(const QString& line) {
    const QString padded = line.leftJustified(width_);
    mkl::write(stderr, u'\r' + padded + (line.isEmpty() ? QStringLiteral("\r") : QString()));
    std::fflush(stderr);
    width_ = line.size();
}

} // namespace mkl
