#include "apps/mklart/Console.h"

#include "base/RunTimeError.h"
#include "base/Texts.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>

namespace mkl {

namespace {

constexpr qint64 pauseMilliseconds = 100;
constexpr Long diskError = 3043;

bool gone = false;

bool write(std::FILE* stream, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    const auto size = static_cast<std::size_t>(utf8.size());
    return std::fwrite(utf8.constData(), 1, size, stream) == size;
}

void requireWritten(bool written) {
    if (written) return;
    gone = errno == EPIPE;
    throwError(diskError, {text(TextId::ToolOutput)});
}

/// Where there is no such name, nothing is shown; a redirected stream is a file or a pipe.
bool errorsGoToTerminal() {
    std::error_code ignored;
    return std::filesystem::is_character_file("/dev/stderr", ignored);
}

} // namespace

void printLine(const QString& line) {
    print(line + u'\n');
}

void print(const QString& part) {
    requireWritten(write(stdout, part));
}

void flushOutput() {
    requireWritten(std::fflush(stdout) == 0);
}

bool outputIsGone() {
    return gone;
}

void complain(const QString& line) {
    std::fflush(stdout);
    write(stderr, line + u'\n');
}

void surviveBrokenPipes() {
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
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
