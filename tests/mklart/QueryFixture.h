#pragma once
// The tool on a small file of our own.
#include "Tool.h"
#include "support/Printing.h"
#include "support/TempDatabase.h"

#include <QJsonArray>
#include <QJsonObject>

namespace mkl {

using namespace Qt::StringLiterals;

class QueryTest : public testing::Test {
protected:
    ToolResult sql(const QString& statement, const QStringList& options = {}) const {
        return tool.run(QStringList{u"sql"_s, file.path(), statement} + options);
    }
    ToolResult find(const QString& source, const QString& criterion, const QStringList& options = {}) const {
        return tool.run(QStringList{u"find"_s, file.path(), source, criterion} + options);
    }
    QJsonObject sqlJson(const QString& statement) const { return sql(statement, {u"--json"_s}).json(); }

    static Long errorOf(const QJsonObject& answer) { return answer[u"error"_s][u"number"_s].toInt(); }

    TempDatabase file{
        "CREATE TABLE Kunde (Nr INTEGER PRIMARY KEY, Name TEXT, Aktiv YESNO, Seit DATETIME, Betrag CURRENCY);"
        "INSERT INTO Kunde VALUES (1, 'Öhler', -1, '2001-04-02 00:00:00', 12.5),"
        "(2, NULL, 0, '2001-04-02 09:30:00', NULL), (3, 'Maß', -1, NULL, 0.0001);"
        "CREATE TABLE Leer (Nr INTEGER PRIMARY KEY, Name TEXT);"};
    Tool tool;
};

} // namespace mkl
