#pragma once
#include "base/Texts.h"
#include "catalogue/RowSource.h"

namespace mkl {

/// The rows of an .mdb or .accdb file, read by the program mklmdbread beside this one. Whatever a damaged file does to
/// that process, here it is error 3049.
class ReaderProcess final : public RowSource {
public:
    /// silenceMilliseconds: how long the process may hand over nothing.
    ReaderProcess(QString file, int silenceMilliseconds);

    /// 3011 if the program is not there; otherwise the errors of the file.
    void readInto(RowSink& sink) override;

private:
    [[noreturn]] void refuseDamage(TextId detail) const;

    QString file_;
    int silenceMilliseconds_;
};

} // namespace mkl
