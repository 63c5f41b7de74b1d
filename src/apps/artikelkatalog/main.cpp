#include "apps/artikelkatalog/CommandLine.h"
#include "apps/artikelkatalog/ConsoleAsker.h"
#include "apps/artikelkatalog/MainWindow.h"
#include "base/Texts.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Without a display Qt would end the process before it could say anything.
bool isWithoutDisplay() {
#ifdef Q_OS_LINUX
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
           qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#else
    return false;
#endif
}

int complain(const QString& message) {
    std::fputs((message + u'\n').toUtf8().constData(), stderr);
    return 1;
}

void speakGerman(QApplication& application) {
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    auto* translator = new QTranslator(&application);
    if (translator->load(QLocale(), u"qtbase"_s, u"_"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

/// Writes a picture of the window. Status 0 only if there was nothing to complain of.
int makeScreenshot(const mkl::CommandLine& line) {
    mkl::ConsoleAsker console;
    mkl::setAsker(&console);
    mkl::setFormRunner(&console);
    QLoggingCategory::setFilterRules(u"default.warning=false"_s); // the toolkit's remarks on a platform without windows
    const QTemporaryDir folder;
    QSettings settings(folder.filePath(u"settings.ini"_s), QSettings::IniFormat);
    mkl::MainWindow window(settings);
    if (!line.size.isEmpty()) window.resize(line.size);
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.show();
    if (!line.file.isEmpty() && !window.showFile(line.file)) return 1;
    if (window.browser()) window.expandTree(line.levels);
    QCoreApplication::processEvents();
    const bool isWritten = window.grab().save(line.screenshot);
    if (!isWritten) return complain(mkl::text(mkl::TextId::ProgramPictureNotWritten, {line.screenshot}));
    return console.wasAsked() ? 1 : 0;
}

int runWindow(const mkl::CommandLine& line) {
    QSettings settings;
    mkl::MainWindow window(settings);
    if (!line.size.isEmpty()) window.resize(line.size);
    window.show();
    // Once the event loop runs, so that the window can be closed while the catalogue is read.
    if (!line.file.isEmpty()) {
        QTimer::singleShot(0, &window, [&] {
            if (window.showFile(line.file)) window.expandTree(line.levels);
        });
    }
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    const bool withoutDisplay = isWithoutDisplay();
    if (withoutDisplay) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setOrganizationName(u"MKLArt25"_s);
    QApplication::setApplicationName(mkl::text(mkl::TextId::ProgramTitle));
    QApplication::setApplicationVersion(QStringLiteral(MKL_VERSION));
    speakGerman(application);

    const mkl::CommandLine line = mkl::CommandLine::of(QApplication::arguments());
    if (!line.screenshot.isEmpty()) return makeScreenshot(line);
    if (withoutDisplay) return complain(mkl::text(mkl::TextId::ProgramNoDisplay));
    return runWindow(line);
}
