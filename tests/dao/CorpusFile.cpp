#include "CorpusFile.h"

#include "support/PostgresServer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

QStringList cells(const QString& line) {
    QStringList result = line.split(u" | "_s);
    for (QString& cell : result)
        cell = cell.trimmed();
    return result;
}

QByteArray quoted(const QString& name) {
    return '"' + name.toUtf8().replace('"', "\"\"") + '"';
}

QByteArray nativeType(QString type) {
    const bool required = type.endsWith(u'!');
    if (required) type.chop(1);
    static const QHash<QString, QByteArray> types = {{u"counter"_s, "INTEGER PRIMARY KEY AUTOINCREMENT"},
                                                     {u"key"_s, "INTEGER PRIMARY KEY"},
                                                     {u"long"_s, "INTEGER"},
                                                     {u"double"_s, "DOUBLE"},
                                                     {u"currency"_s, "CURRENCY"},
                                                     {u"yesno"_s, "YESNO"},
                                                     {u"date"_s, "DATETIME"},
                                                     {u"text"_s, "TEXT"},
                                                     {u"any"_s, mkl::testsOnServer() ? "VARIANT" : ""}};
    EXPECT_TRUE(types.contains(type)) << type.toStdString();
    return types.value(type) + (required ? " NOT NULL" : "");
}

// As the engine stores it.
QByteArray nativeValue(const QString& value) {
    static const QRegularExpression date(u"^\\d{4}-\\d\\d-\\d\\d( \\d\\d:\\d\\d:\\d\\d)?$"_s);
    if (value == u"Null"_s) return "NULL";
    if (date.match(value).hasMatch()) return '\'' + value.toUtf8() + (value.size() == 10 ? " 00:00:00'" : "'");
    return value.toUtf8();
}

QString expanded(QString text) {
    static const QRegularExpression repeated(u"«(\\d+)×(.*?)»"_s), character(u"«U\\+([0-9A-F]{4})»"_s);
    for (auto match = repeated.match(text); match.hasMatch(); match = repeated.match(text))
        text.replace(match.capturedStart(), match.capturedLength(),
                     match.captured(2).repeated(match.captured(1).toInt()));
    for (auto match = character.match(text); match.hasMatch(); match = character.match(text))
        text.replace(match.capturedStart(), match.capturedLength(), QChar(match.captured(1).toUShort(nullptr, 16)));
    return text;
}

class Reader {
public:
    explicit Reader(const QString& path)
        : info_(path) {
        file_.name = info_.fileName();
    }

    CorpusFile read() {
        QFile input(info_.filePath());
        EXPECT_TRUE(input.open(QIODevice::ReadOnly)) << info_.filePath().toStdString();
        const QStringList lines = QString::fromUtf8(input.readAll()).split(u'\n');
        for (number_ = 1; number_ <= lines.size(); ++number_)
            take(lines[number_ - 1]);
        return file_;
    }

private:
    void take(const QString& line) {
        if (line.startsWith(u'#') || line.trimmed().isEmpty()) {
            inTable_ = false;
            return;
        }
        const QString word = line.section(u' ', 0, 0), rest = line.section(u' ', 1);
        if (inTable_) return takeTableLine(line);
        if (word == u"include"_s)
            file_.tables += CorpusFile::read(info_.dir().filePath(rest)).tables;
        else if (word == u"table"_s)
            beginTable(rest);
        else if (word == u"in"_s)
            source_ = rest;
        else if (!beginCase(word, rest))
            takeExpectation(word, rest);
    }

    void beginTable(const QString& name) {
        file_.tables.append({name, {}, {}});
        inTable_ = true;
    }

    void takeTableLine(const QString& line) {
        CorpusTable& table = file_.tables.last();
        if (table.columns.isEmpty())
            table.columns = cells(line);
        else
            table.rows.append(cells(line));
    }

    bool beginCase(const QString& word, const QString& rest) {
        static const QHash<QString, CorpusKind> kinds = {{u"?"_s, CorpusKind::Query},
                                                         {u"!"_s, CorpusKind::StrictAction},
                                                         {u"~"_s, CorpusKind::LenientAction},
                                                         {u"find"_s, CorpusKind::Find}};
        if (!kinds.contains(word)) return false;
        CorpusCase entry;
        entry.place = u"%1:%2"_s.arg(file_.name).arg(number_);
        entry.kind = kinds[word];
        entry.source = source_;
        entry.text = expanded(rest);
        file_.cases.append(entry);
        return true;
    }

    void takeExpectation(const QString& word, const QString& rest) {
        if (file_.cases.isEmpty()) return fail(word);
        CorpusCase& entry = file_.cases.last();
        if (word == u"="_s) {
            entry.rows.append(cells(rest).join(u" | "_s));
            entry.expectsRows = true;
        } else if (word == u"empty"_s) {
            entry.expectsRows = true;
        } else if (word == u"names"_s) {
            entry.names = cells(rest);
        } else if (word == u"affected"_s) {
            entry.affected = rest.toInt();
        } else if (word == u"after"_s) {
            entry.after = rest;
        } else if (word == u"error"_s) {
            entry.error = rest.section(u' ', 0, 0).toInt();
            entry.token = expanded(rest.section(u' ', 1));
        } else {
            fail(word);
        }
    }

    void fail(const QString& word) const {
        ADD_FAILURE() << file_.name.toStdString() << ':' << number_ << ": not understood: " << word.toStdString();
    }

    QFileInfo info_;
    CorpusFile file_;
    QString source_;
    qsizetype number_ = 0;
    bool inTable_ = false;
};

} // namespace

QByteArray CorpusTable::native() const {
    QByteArrayList declared;
    for (const QString& column : columns) {
        const QString type = column.section(u' ', -1);
        declared.append(quoted(column.chopped(type.size() + 1)) + ' ' + nativeType(type));
    }
    QByteArray statements = "CREATE TABLE " + quoted(name) + " (" + declared.join(", ") + ");";
    for (const QStringList& row : rows) {
        QByteArrayList values;
        for (const QString& value : row)
            values.append(nativeValue(value));
        statements += "INSERT INTO " + quoted(name) + " VALUES (" + values.join(", ") + ");";
    }
    return statements;
}

CorpusFile CorpusFile::read(const QString& path) {
    return Reader(path).read();
}

QByteArray CorpusFile::native() const {
    QByteArray statements;
    for (const CorpusTable& table : tables)
        statements += table.native();
    return "BEGIN;" + statements + "COMMIT;"; // one write to the disk and not one for each row
}

} // namespace dao
