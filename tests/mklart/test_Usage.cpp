#include "Tool.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

TEST(Usage, helpOfTheToolAndOfEachCommand) {
    const Tool tool;
    const ToolResult general = tool.run({u"--help"_s});
    EXPECT_EQ(general.status, 0);
    for (const QString& command :
         {u"new"_s, u"demo"_s, u"import"_s, u"info"_s, u"tree"_s, u"check"_s, u"sql"_s, u"find"_s, u"replica"_s}) {
        EXPECT_TRUE(general.output.contains(command));
        const ToolResult help = tool.run({command, u"--help"_s});
        EXPECT_EQ(help.status, 0);
        EXPECT_TRUE(help.output.contains(u"Aufruf: mklart "_s + command)) << help.output.toStdString();
        EXPECT_TRUE(help.output.contains(u"Rückgabe: 0"));
        EXPECT_EQ(help.errors, QString());
    }
}

TEST(Usage, wrongCallsHaveAStatusOfTheirOwnAndSayWhy) {
    const Tool tool;
    const struct {
        QStringList arguments;
        QString word;
    } calls[] = {{{}, u"Befehle"_s},
                 {{u"weg"_s}, u"'weg'"_s},
                 {{u"new"_s}, u"FILE"_s},
                 {{u"new"_s, u"a"_s, u"b"_s}, u"'b'"_s},
                 {{u"new"_s, u"a"_s, u"--json"_s}, u"'json'"_s},
                 {{u"sql"_s, u"a"_s}, u"STATEMENT"_s},
                 {{u"find"_s, u"a"_s, u"b"_s}, u"CRITERION"_s},
                 {{u"demo"_s, u"a"_s, u"--articles"_s}, u"Wert"_s},
                 {{u"demo"_s, u"a"_s, u"--articles"_s, u"viele"_s}, u"--articles"_s},
                 {{u"demo"_s, u"a"_s, u"--articles"_s, u"-1"_s}, u"--articles"_s},
                 {{u"tree"_s, u"a"_s, u"--levels=x"_s}, u"--levels"_s},
                 {{u"replica"_s}, u"ACTION"_s},
                 {{u"replica"_s, u"status"_s}, u"FILE"_s},
                 {{u"replica"_s, u"los"_s, u"a"_s}, u"'los'"_s},
                 {{u"replica"_s, u"status"_s, u"a"_s, u"3"_s}, u"'3'"_s},
                 {{u"replica"_s, u"digit"_s, u"a"_s}, u"DIGIT"_s},
                 {{u"replica"_s, u"digit"_s, u"a"_s, u"10"_s}, u"10"_s},
                 {{u"replica"_s, u"digit"_s, u"a"_s, u"-1"_s}, u"1"_s},
                 {{u"replica"_s, u"digit"_s, u"a"_s, u"drei"_s}, u"drei"_s},
                 {{u"replica"_s, u"digit"_s, u"a"_s, u""_s}, u"0 bis 9"_s},
                 {{u"new"_s, u"a"_s, u"--language=fr"_s}, u"'fr'"_s}};
    for (const auto& [arguments, word] : calls) {
        // The last --language counts for nothing: the first one is taken.
        const ToolResult result =
            arguments.contains(u"--language=fr"_s) ? tool.runIn(u"de_DE.UTF-8"_s, arguments) : tool.run(arguments);
        EXPECT_EQ(result.status, 2) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(result.errors.contains(word)) << result.errors.toStdString();
        EXPECT_EQ(result.output, QString());
    }
    EXPECT_EQ(tool.files(), QStringList());
}

TEST(Usage, languageByLocaleAndByOption) {
    const Tool tool;
    EXPECT_TRUE(tool.runIn(u"de_DE.UTF-8"_s, {u"--help"_s}).output.contains(u"Befehle:"));
    EXPECT_TRUE(tool.runIn(u"en_GB.UTF-8"_s, {u"--help"_s}).output.contains(u"Commands:"));
    EXPECT_TRUE(
        tool.runIn(u"de_DE.UTF-8"_s, {u"info"_s, u"fehlt"_s, u"--language=en"_s}).errors.contains(u"not found"));
    EXPECT_TRUE(tool.run({u"info"_s, u"fehlt"_s}).errors.contains(u"nicht gefunden"));
}

TEST(Usage, everyFailureIsOneLine) {
    const Tool tool;
    QFile foreign(tool.path(u"brief.txt"_s));
    ASSERT_TRUE(foreign.open(QIODevice::WriteOnly));
    foreign.write(QByteArray(5000, 'x'));
    foreign.close();
    for (const QStringList& arguments :
         {QStringList{u"info"_s, u"fehlt"_s}, QStringList{u"info"_s, u"brief.txt"_s},
          QStringList{u"tree"_s, u"brief.txt"_s}, QStringList{u"check"_s, tool.path({})},
          QStringList{u"sql"_s, u"brief.txt"_s, u"SELECT 1"_s}, QStringList{u"import"_s, u"brief.txt"_s, u"neu"_s},
          QStringList{u"import"_s, u"fehlt.mdb"_s}, QStringList{u"new"_s, u"fehlt/neu"_s},
          QStringList{u"replica"_s, u"status"_s, u"fehlt"_s},
          QStringList{u"replica"_s, u"digit"_s, u"brief.txt"_s, u"3"_s}, QStringList{u"new"_s, u"brief.txt"_s},
          QStringList{u"demo"_s, u"brief.txt"_s}}) {
        const ToolResult result = tool.run(arguments);
        EXPECT_EQ(result.status, 1) << arguments.join(u' ').toStdString();
        EXPECT_EQ(result.errors.count(u'\n'), 1) << result.errors.toStdString();
        EXPECT_TRUE(result.errors.startsWith(u"mklart: ")) << result.errors.toStdString();
    }
    EXPECT_EQ(tool.files(), QStringList{u"brief.txt"_s});
}
