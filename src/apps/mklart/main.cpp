#include "apps/mklart/Command.h"
#include "apps/mklart/Console.h"
#include "apps/mklart/ServerPassword.h"
#include "base/RunTimeError.h"
#include "catalogue/VisibleText.h"

#include <QCoreApplication>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

int runTool(QStringList arguments) {
    chooseLanguage(arguments);
    if (holdsPassword(arguments)) {
        complain(text(TextId::ToolPasswordInAddress));
        return WrongUsage;
    }
    const QString name = arguments.value(0);
    if (name == u"--help" || name == u"help") {
        printLine(generalHelp());
        flushOutput();
        return Success;
    }
    const Command* command = findCommand(name);
    if (!command) {
        complain(name.isEmpty() ? generalHelp() : text(TextId::ToolUnknownCommand, {name}));
        return WrongUsage;
    }
    const int status = command->run(Invocation(*command, arguments.mid(1)));
    flushOutput();
    return status;
}

} // namespace

} // namespace mkl

int main(int argc, char** argv) {
    using namespace mkl;
    using namespace Qt::StringLiterals;
    QCoreApplication application(argc, argv);
    surviveBrokenPipes();
    try {
        return runTool(QCoreApplication::arguments().mid(1));
    } catch (const RunTimeError& error) {
        if (outputIsGone()) return Failure;
        complain(u"mklart: "_s + visibleText(error.description()));
    } catch (const std::exception& error) {
        complain(u"mklart: "_s + QString::fromUtf8(error.what()));
    }
    return Failure;
}
