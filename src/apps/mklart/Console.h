#pragma once
#include <QElapsedTimer>
#include <QString>

namespace mkl {

/// Writes a line to standard output, in UTF-8.
void printLine(const QString& line);
/// Writes a line to standard error.
void complain(const QString& line);

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
