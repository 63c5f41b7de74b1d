#include "Tool.h"

#include <QDir>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace mkl {

using namespace Qt::StringLiterals;

QJsonObject ToolResult::json() const {
    return QJsonDocument::fromJson(output.toUtf8()).object();
}

QList<QJsonObject> ToolResult::jsonLines() const {
    QList<QJsonObject> lines;
    for (const QByteArray& line : output.toUtf8().split('\n'))
        lines.append(QJsonDocument::fromJson(line).object());
    EXPECT_TRUE(output.isEmpty() || output.endsWith(u'\n'));
    lines.removeLast(); // what stands behind the last line's end
    return lines;
}

Tool::Tool()
    : environment_(QProcessEnvironment::systemEnvironment()) {}

ToolResult Tool::run(const QStringList& arguments, const QByteArray& input) const {
    return finish(environment_, QStringList{u"--language"_s, u"de"_s} + arguments, input);
}

ToolResult Tool::runIn(const QString& locale, const QStringList& arguments, const QByteArray& input) const {
    QProcessEnvironment environment = environment_;
    environment.insert(u"LC_ALL"_s, locale);
    environment.insert(u"LANG"_s, locale);
    environment.remove(u"LANGUAGE"_s);
    return finish(environment, arguments, input);
}

ToolResult Tool::finish(const QProcessEnvironment& environment, const QStringList& arguments,
                        const QByteArray& input) const {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder_.path());
    process.start(QStringLiteral(MKL_BIN_DIR "/mklart"), arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool ended = process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QStringList Tool::files() const {
    return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QString testData(const QString& name) {
    return QStringLiteral(MKL_SOURCE_DIR "/tests/data/") + name;
}

} // namespace mkl
