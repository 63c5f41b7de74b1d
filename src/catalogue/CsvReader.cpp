#include "catalogue/CsvReader.h"

#include "catalogue/Refusal.h"

#include <QStringDecoder>

namespace mkl {

CsvReader::CsvReader(QString fileName, QByteArray bytes)
    : fileName_(std::move(fileName))
    , bytes_(std::move(bytes)) {
    if (bytes_.startsWith("\xEF\xBB\xBF")) at_ = 3;
}

void CsvReader::refuseLine(const QString& reason) const {
    refuse(refusal::Damaged, TextId::ImportCsvLine, {fileName_, QString::number(line_), reason});
}

bool CsvReader::next(QList<CsvField>& fields) {
    fields.clear();
    if (at_ >= bytes_.size()) return false;
    line_ = nextLine_;
    for (;;) {
        fields.append(bytes_[at_] == '"' ? quotedField() : plainField());
        if (at_ >= bytes_.size()) refuseLine(text(TextId::ImportCsvTruncated));
        if (bytes_[at_] != ',') break;
        if (++at_ >= bytes_.size()) refuseLine(text(TextId::ImportCsvTruncated));
    }
    if (!atLineEnd()) refuseLine(text(TextId::ImportCsvQuotes));
    at_ += bytes_[at_] == '\r' ? 2 : 1;
    ++nextLine_;
    return true;
}

bool CsvReader::atLineEnd() const {
    return bytes_[at_] == '\n' || (bytes_[at_] == '\r' && at_ + 1 < bytes_.size() && bytes_[at_ + 1] == '\n');
}

CsvField CsvReader::quotedField() {
    QByteArray value;
    for (++at_;; ++at_) {
        const qsizetype quote = bytes_.indexOf('"', at_);
        if (quote < 0) refuseLine(text(TextId::ImportCsvQuotes));
        value += QByteArrayView(bytes_).sliced(at_, quote - at_);
        at_ = quote + 1;
        if (at_ >= bytes_.size() || bytes_[at_] != '"') break;
        value += '"';
    }
    nextLine_ += value.count('\n');
    return {decoded(value), true};
}

CsvField CsvReader::plainField() {
    const qsizetype from = at_;
    while (at_ < bytes_.size() && bytes_[at_] != ',' && !atLineEnd()) {
        if (bytes_[at_] == '"') refuseLine(text(TextId::ImportCsvQuotes));
        ++at_;
    }
    return {decoded(bytes_.sliced(from, at_ - from)), false};
}

QString CsvReader::decoded(const QByteArray& utf8) const {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString result = decoder(utf8);
    if (decoder.hasError()) refuseLine(text(TextId::ImportCsvNoText));
    return result;
}

} // namespace mkl
