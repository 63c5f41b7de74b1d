#include "apps/mklart/Command.h"

#include "apps/mklart/Commands.h"
#include "apps/mklart/Console.h"
#include "apps/mklart/QueryCommand.h"

#include <QCommandLineParser>
#include <QLocale>
#include <algorithm>
#include <cstdlib>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype helpColumn = 24;

[[noreturn]] void endWith(ExitStatus status) {
    std::exit(status);
}

[[noreturn]] void refuseUsage(const QString& message, const QString& command) {
    complain(message);
    complain(text(TextId::ToolSeeHelp, {command}));
    endWith(WrongUsage);
}

QString helpLine(const QString& name, const QString& help) {
    return u"  "_s + name.leftJustified(helpColumn) + help + u'\n';
}

QString optionTitle(const Option& option) {
    return u"--"_s + option.name + (option.value.isEmpty() ? QString() : u' ' + option.value);
}

QList<Option> commonOptions() {
    return {{u"language"_s, u"de|en"_s, TextId::ToolHelpLanguage}, {u"help"_s, {}, TextId::ToolHelpHelp}};
}

QString optionsHelp(const QList<Option>& options) {
    QString help = text(TextId::ToolOptions) + u'\n';
    for (const Option& option : options)
        help += helpLine(optionTitle(option), text(option.help));
    return help;
}

Command replicaCommand(const Argument& catalogue, const Option& json) {
    return {u"replica"_s,
            TextId::ToolSummaryReplica,
            {{u"ACTION"_s, TextId::ToolHelpReplicaAction}, catalogue, {u"DIGIT"_s, TextId::ToolHelpDigit, false}},
            {{u"digit"_s, u"N"_s, TextId::ToolHelpInitDigit},
             {u"peer"_s, u"URL"_s, TextId::ToolHelpPeer},
             {u"address"_s, u"URL"_s, TextId::ToolHelpAddress},
             {u"same-rows"_s, {}, TextId::ToolHelpSameRows},
             json},
            runReplica,
            TextId::ToolNotesReplica};
}

} // namespace

const QList<Command>& commands() {
    const Option json{u"json"_s, {}, TextId::ToolHelpJson};
    const Argument catalogue{u"FILE"_s, TextId::ToolHelpCatalogue};
    const Argument newFile{u"FILE"_s, TextId::ToolHelpNewFile};
    const Argument file{u"FILE"_s, TextId::ToolHelpDatabase};
    const QList<Option> queryOptions = QList<Option>{json} + queryFileOptions();
    static const QList<Command> rows = {
        {u"new"_s, TextId::ToolSummaryNew, {newFile}, {}, runNew},
        {u"demo"_s,
         TextId::ToolSummaryDemo,
         {newFile},
         {{u"articles"_s, u"N"_s, TextId::ToolHelpArticles},
          {u"categories"_s, u"N"_s, TextId::ToolHelpCategories},
          {u"seed"_s, u"N"_s, TextId::ToolHelpSeed}},
         runDemo},
        {u"import"_s,
         TextId::ToolSummaryImport,
         {{u"SOURCE"_s, TextId::ToolHelpSource}, {u"TARGET"_s, TextId::ToolHelpTarget, false}},
         {},
         runImport},
        {u"copy"_s, TextId::ToolSummaryCopy, {catalogue, {u"TARGET"_s, TextId::ToolHelpCopyTarget}}, {}, runCopy},
        {u"info"_s, TextId::ToolSummaryInfo, {catalogue}, {json}, runInfo},
        {u"tree"_s,
         TextId::ToolSummaryTree,
         {catalogue},
         {{u"levels"_s, u"N"_s, TextId::ToolHelpLevels},
          {u"no-articles"_s, {}, TextId::ToolHelpNoArticles},
          {u"root"_s, u"KEY"_s, TextId::ToolHelpRoot}},
         runTree},
        {u"check"_s, TextId::ToolSummaryCheck, {catalogue}, {json}, runCheck},
        {u"repair"_s,
         TextId::ToolSummaryRepair,
         {catalogue},
         {{u"dense"_s, {}, TextId::ToolHelpDense},
          {u"delete-without-article"_s, {}, TextId::ToolHelpDeleteWithoutArticle},
          {u"dry-run"_s, {}, TextId::ToolHelpDryRun},
          json},
         runRepair,
         TextId::ToolNotesRepair},
        replicaCommand(catalogue, json),
        {u"sql"_s,
         TextId::ToolSummarySql,
         {file, {u"STATEMENT"_s, TextId::ToolHelpStatement}},
         queryOptions,
         runSql,
         TextId::ToolNotesLines},
        {u"find"_s,
         TextId::ToolSummaryFind,
         {file, {u"SOURCE"_s, TextId::ToolHelpQuery}, {u"CRITERION"_s, TextId::ToolHelpCriterion}},
         queryOptions,
         runFind,
         TextId::ToolNotesLines},
    };
    return rows;
}

const Command* findCommand(const QString& name) {
    const auto found = std::ranges::find(commands(), name, &Command::name);
    return found == commands().end() ? nullptr : &*found;
}

Invocation::Invocation(const Command& command, const QStringList& arguments)
    : command_(command) {
    QCommandLineParser parser;
    parser.addOption({u"help"_s, {}});
    for (const Option& option : command.options)
        parser.addOption({option.name, {}, option.value});
    const bool understood = parser.parse(QStringList{command.name} + arguments);
    if (parser.isSet(u"help"_s)) {
        printLine(helpOf(command));
        endWith(Success);
    }
    if (!parser.unknownOptionNames().isEmpty())
        refuse(text(TextId::ToolUnknownOption, {parser.unknownOptionNames().first()}));
    if (!understood) refuse(text(TextId::ToolOptionNoValue));
    arguments_ = parser.positionalArguments();
    for (const Option& option : command.options)
        if (parser.isSet(option.name)) values_.insert(option.name, parser.values(option.name));
    checkArguments();
}

void Invocation::checkArguments() const {
    const auto& expected = command_.arguments;
    if (arguments_.size() > expected.size()) refuse(text(TextId::ToolArgumentSurplus, {arguments_[expected.size()]}));
    for (qsizetype i = arguments_.size(); i < expected.size(); ++i)
        if (expected[i].required) refuse(text(TextId::ToolArgumentMissing, {expected[i].name}));
}

void Invocation::refuse(const QString& message) const {
    refuseUsage(message, u"mklart "_s + command_.name);
}

Long Invocation::number(const QString& option, Long fallback, Long lowest, Long highest) const {
    if (!has(option)) return fallback;
    bool ok = false;
    const Long number = value(option).toInt(&ok);
    if (!ok || number < lowest || number > highest)
        refuse(text(TextId::ToolBadNumber, {option, QString::number(lowest), QString::number(highest)}));
    return number;
}

void chooseLanguage(QStringList& arguments) {
    const QString prefix = u"--language"_s;
    QString name = QLocale::system().language() == QLocale::German ? u"de"_s : u"en"_s;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (arguments[i].startsWith(prefix + u'=')) {
            name = arguments.takeAt(i).mid(prefix.size() + 1);
        } else if (arguments[i] == prefix) {
            name = arguments.value(i + 1);
            arguments.remove(i, std::min<qsizetype>(2, arguments.size() - i));
        } else {
            continue;
        }
        break;
    }
    if (name != u"de" && name != u"en") refuseUsage(text(TextId::ToolBadLanguage, {name}), u"mklart"_s);
    setTextLanguage(name == u"de" ? Language::German : Language::English);
}

QString generalHelp() {
    QString help = text(TextId::ToolDescription) + u"\n\n"_s + text(TextId::ToolUsage, {u"mklart COMMAND ..."_s}) +
                   u"\n\n"_s + text(TextId::ToolCommands) + u'\n';
    for (const Command& command : commands())
        help += helpLine(command.name, text(command.summary));
    return help + u'\n' + optionsHelp(commonOptions()) + u'\n' + text(TextId::ToolExitCodes);
}

QString helpOf(const Command& command) {
    QString usage = u"mklart "_s + command.name, arguments;
    for (const Argument& argument : command.arguments) {
        usage += argument.required ? u' ' + argument.name : u" ["_s + argument.name + u']';
        arguments += helpLine(argument.name, text(argument.help));
    }
    const QString notes = command.notes ? text(*command.notes) + u"\n\n"_s : QString();
    return text(command.summary) + u"\n\n"_s + text(TextId::ToolUsage, {usage}) + u'\n' + arguments + u'\n' +
           optionsHelp(command.options + commonOptions()) + u'\n' + notes + text(TextId::ToolExitCodes);
}

} // namespace mkl
