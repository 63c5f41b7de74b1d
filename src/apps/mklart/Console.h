#pragma once
#include <QElapsedTimer>
#include <QString>

namespace mkl {

/// Writes a line to standard output, in UTF-8. 3043 where it cannot be written.
void printLine(const QString& line);
/// The same without the line's end, for long lines in parts.
void print(const QString& part);
/// Hands over what is still held back, so that a reader at the other end of a pipe gets it now. 3043 likewise.
void flushOutput();
/// True once the reader of standard output has gone: nobody is there to be told of it.
bool outputIsGone();

/// Writes a line to standard error.
void complain(const QString& line);

/// A reader that goes away is seen by printLine and its like from now on, and does not end the program on the spot.
void surviveBrokenPipes();

/// The state of long work on one line of standard error, as long as that is a terminal. Gone with the object.
class ProgressLine {
public:
    ProgressLine();
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// expected: -1 where nobody knows. Writes a few times a second at most.
    void show(const QString& what, qint64 done, qint64 expected);

private:
    void write(const QString& line);

    bool visible_;
    QElapsedTimer sinceLast_;
    qsizetype width_ = 0;
};

} // namespace mkl
