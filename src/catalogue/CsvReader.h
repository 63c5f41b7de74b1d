#pragma once
#include <QByteArray>
#include <QList>
#include <QString>

namespace mkl {

/// One field of a CSV line: an empty one without quotes is Null, "" is the empty text.
struct CsvField {
    QString text;
    bool quoted = false;

    bool isNull() const { return !quoted && text.isEmpty(); }
};

/// Splits CSV text (UTF-8, comma, line end LF or CR LF) into lines. Errors are 3049 and name file and line.
class CsvReader {
public:
    /// fileName is for the messages.
    CsvReader(QString fileName, QByteArray bytes);

    /// Reads the next line; false at the end.
    bool next(QList<CsvField>& fields);
    /// Raises the error of this line.
    [[noreturn]] void refuseLine(const QString& reason) const;

private:
    CsvField quotedField();
    CsvField plainField();
    bool atLineEnd() const;
    QString decoded(const QByteArray& utf8) const;

    QString fileName_;
    QByteArray bytes_;
    qsizetype at_ = 0;
    qint64 line_ = 0;     ///< number of the line that next() gave out
    qint64 nextLine_ = 1; ///< a quoted field may span several
};

} // namespace mkl
