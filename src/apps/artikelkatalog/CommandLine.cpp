#include "apps/artikelkatalog/CommandLine.h"

#include "apps/artikelkatalog/Failure.h"
#include "base/Texts.h"
#include "dao/ServerAddress.h"

#include <QCommandLineParser>
#include <QRegularExpression>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

[[noreturn]] void refuse(const QString& message) {
    std::fputs((message + u'\n').toUtf8().constData(), stderr);
    std::exit(2);
}

QSize sizeOf(const QString& value) {
    static const QRegularExpression form(u"^([1-9]\\d{1,4})x([1-9]\\d{1,4})$"_s);
    const QRegularExpressionMatch match = form.match(value);
    if (!match.hasMatch()) refuse(text(TextId::ProgramBadSize, {value}));
    return {match.captured(1).toInt(), match.captured(2).toInt()};
}

int levelsOf(const QString& value) {
    bool isNumber = false;
    const int levels = value.toInt(&isNumber);
    if (!isNumber || levels < 0) refuse(text(TextId::ProgramBadLevels, {value}));
    return levels;
}

// Everybody on the machine sees the arguments: a password among them is none any more.
void requireAddress(const QString& address) {
    succeeds([&] { dao::serverAddress(address); }, [] { refuse(currentError().Description()); });
}

} // namespace

CommandLine CommandLine::of(const QStringList& arguments) {
    const QCommandLineOption screenshot(u"screenshot"_s, text(TextId::ProgramHelpScreenshot),
                                        text(TextId::ProgramValuePicture));
    const QCommandLineOption size(u"size"_s, text(TextId::ProgramHelpSize), text(TextId::ProgramValueSize));
    const QCommandLineOption expand(u"expand"_s, text(TextId::ProgramHelpExpand), text(TextId::ProgramValueLevels));
    QCommandLineParser parser;
    parser.setApplicationDescription(text(TextId::ProgramTitle));
    parser.addPositionalArgument(text(TextId::ProgramValueFile), text(TextId::ProgramHelpFile),
                                 u'[' + text(TextId::ProgramValueFile) + u']');
    const QCommandLineOption help({u"h"_s, u"help"_s}, text(TextId::ProgramHelpHelp));
    parser.addOptions({screenshot, size, expand, help});
    const QCommandLineOption version = parser.addVersionOption();
    if (!parser.parse(arguments)) refuse(parser.errorText());
    if (parser.isSet(help)) parser.showHelp();
    if (parser.isSet(version)) parser.showVersion();

    const QStringList files = parser.positionalArguments();
    if (files.size() > 1) refuse(text(TextId::ProgramOneFile));
    CommandLine line;
    line.file = files.value(0);
    if (dao::isServerAddress(line.file)) requireAddress(line.file);
    line.screenshot = parser.value(screenshot);
    if (parser.isSet(size)) line.size = sizeOf(parser.value(size));
    if (parser.isSet(expand)) line.levels = levelsOf(parser.value(expand));
    return line;
}

} // namespace mkl
