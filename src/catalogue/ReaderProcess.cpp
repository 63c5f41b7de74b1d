#include "catalogue/ReaderProcess.h"

#include "catalogue/Refusal.h"
#include "catalogue/RowStream.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

const QString readerName = u"mklmdbread"_s;

QString readerProgram() {
    QString program = QStandardPaths::findExecutable(readerName, {QCoreApplication::applicationDirPath()});
    if (program.isEmpty()) program = QStandardPaths::findExecutable(readerName);
    if (program.isEmpty()) refuse(refusal::Missing, TextId::ImportNoReader, {readerName});
    return program;
}

/// Ends the process also where the rows were not wanted to the end.
class RunningReader {
public:
    RunningReader(const QString& program, const QStringList& arguments) {
        process_.setStandardErrorFile(QProcess::nullDevice()); // the library's remarks are no text for people
        process_.start(program, arguments, QIODevice::ReadOnly);
    }
    ~RunningReader() {
        process_.kill();
        process_.waitForFinished();
    }
    RunningReader(const RunningReader&) = delete;
    RunningReader& operator=(const RunningReader&) = delete;

    QProcess& process() { return process_; }

private:
    QProcess process_;
};

} // namespace

ReaderProcess::ReaderProcess(QString file, int silenceMilliseconds)
    : file_(std::move(file))
    , silenceMilliseconds_(silenceMilliseconds) {}

void ReaderProcess::refuseDamage(TextId detail) const {
    refuse(refusal::Damaged, TextId::ImportDamaged, {file_, text(detail)});
}

void ReaderProcess::readInto(RowSink& sink) {
    const QString language = textLanguage() == Language::English ? u"en"_s : u"de"_s;
    RunningReader reader(readerProgram(), {file_, language});
    QProcess& process = reader.process();
    RowStreamReader stream(sink);
    while (process.waitForReadyRead(silenceMilliseconds_))
        stream.take(process.readAllStandardOutput());
    stream.take(process.readAllStandardOutput());
    if (stream.isComplete()) return;
    const bool running = process.state() != QProcess::NotRunning;
    refuseDamage(running ? TextId::ImportReaderSilent : TextId::ImportReaderDied);
}

} // namespace mkl
