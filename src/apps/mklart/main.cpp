#include "apps/mklart/Command.h"
#include "apps/mklart/Console.h"
#include "base/RunTimeError.h"
#include "catalogue/VisibleText.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    using namespace mkl;
    using namespace Qt::StringLiterals;
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    chooseLanguage(arguments);
    const QString name = arguments.value(0);
    if (name == u"--help" || name == u"help") {
        printLine(generalHelp());
        return Success;
    }
    const Command* command = findCommand(name);
    if (!command) {
        complain(name.isEmpty() ? generalHelp() : text(TextId::ToolUnknownCommand, {name}));
        return WrongUsage;
    }
    try {
        return command->run(Invocation(*command, arguments.mid(1)));
    } catch (const RunTimeError& error) {
        complain(u"mklart: "_s + visibleText(error.description()));
    } catch (const std::exception& error) {
        complain(u"mklart: "_s + QString::fromUtf8(error.what()));
    }
    return Failure;
}
