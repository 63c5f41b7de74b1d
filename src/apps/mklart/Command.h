#pragma once
// A command of the tool is a row: its name, what it takes, and the function that runs it.
#include "base/Texts.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>
#include <optional>

namespace mkl {

class Invocation;

struct Argument {
    QString name;
    TextId help;
    bool required = true;
};

struct Option {
    QString name;
    QString value; ///< name of the value; empty for a switch
    TextId help;
};

struct Command {
    QString name;
    TextId summary;
    QList<Argument> arguments;
    QList<Option> options;
    int (*run)(const Invocation& call); ///< gives the exit status
    std::optional<TextId> notes = {};   ///< more to say below the options
};

const QList<Command>& commands();
/// nullptr if there is none of that name.
const Command* findCommand(const QString& name);

/// Exit status of the program.
enum ExitStatus : int { Success = 0, Failure = 1, WrongUsage = 2 };

/// What was given to a command on the command line.
class Invocation {
public:
    /// Reads the arguments behind the command's name. A wrong one ends the program with its message and status 2,
    /// --help with the help and 0.
    Invocation(const Command& command, const QStringList& arguments);

    /// Empty where it was not given.
    QString argument(int index) const { return arguments_.value(index); }
    bool has(const QString& option) const { return values_.contains(option); }
    QString value(const QString& option) const { return values_.value(option).value(0); }
    /// Of an option that may be given several times.
    QStringList values(const QString& option) const { return values_.value(option); }
    /// The option's value as a number; ends the program where it is none.
    Long number(const QString& option, Long fallback, Long lowest, Long highest) const;
    /// Ends the program as a wrong call does, with the message and status 2.
    [[noreturn]] void refuse(const QString& message) const;

private:
    void checkArguments() const;

    const Command& command_;
    QStringList arguments_;
    QHash<QString, QStringList> values_;
};

/// Puts --language or the locale into force and takes the option out of the arguments.
void chooseLanguage(QStringList& arguments);

/// The help of the whole tool, and of one command.
QString generalHelp();
QString helpOf(const Command& command);

} // namespace mkl
