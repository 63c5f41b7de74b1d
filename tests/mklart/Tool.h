#pragma once
// Runs the program as a user would.
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

namespace mkl {

struct ToolResult {
    int status = -1; ///< -1 where the program did not end by itself
    QString output;
    QString errors;

    QJsonObject json() const;
    /// One value per line of the output; null where a line is no JSON.
    QList<QJsonObject> jsonLines() const;
};

class Tool {
public:
    Tool();

    /// Speaks German unless the arguments say otherwise.
    ToolResult run(const QStringList& arguments, const QByteArray& input = {}) const;
    /// The same with a locale instead of --language.
    ToolResult runIn(const QString& locale, const QStringList& arguments, const QByteArray& input = {}) const;

    /// For all runs from now on.
    void setVariable(const QString& name, const QString& value) { environment_.insert(name, value); }

    QString path(const QString& name) const { return folder_.filePath(name); }
    QStringList files() const;

private:
    ToolResult finish(const QProcessEnvironment& environment, const QStringList& arguments,
                      const QByteArray& input) const;

    QTemporaryDir folder_;
    QProcessEnvironment environment_;
};

QString testData(const QString& name);

} // namespace mkl
