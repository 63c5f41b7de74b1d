#include "desktop/Desktop.h"

#include <QCoreApplication>
#include <QDir>
#include <QPoint>

using namespace Qt::StringLiterals;

namespace mkl::desktop {

bool waitUntil(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(30000)) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

QString runTool(const QString& tool, const QStringList& arguments) {
    QProcess process;
    process.start(tool, arguments);
    EXPECT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; })) << tool.toStdString();
    process.kill();
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void click(const QPoint& onScreen) {
    xdotool({u"mousemove"_s, QString::number(onScreen.x()), QString::number(onScreen.y()), u"click"_s, u"1"_s});
}

void press(const QString& keys) {
    xdotool({u"key"_s, keys});
}

namespace {

QString pictureFile(const QString& name) {
    const QString folder = QStringLiteral(MKL_ARTEFACTS_DIR);
    QDir().mkpath(folder);
    return folder + u'/' + name + u".png"_s;
}

} // namespace

void keepPicture(const QString& name) {
    runTool(u"import"_s, {u"-window"_s, u"root"_s, pictureFile(name)});
}

void keepPicture(const QString& name, const QRect& part) {
    const QString where = u"%1x%2+%3+%4"_s.arg(part.width()).arg(part.height()).arg(part.x()).arg(part.y());
    runTool(u"import"_s, {u"-window"_s, u"root"_s, u"-crop"_s, where, u"+repage"_s, u"+dither"_s, u"-colors"_s, u"64"_s,
                          u"-strip"_s, u"PNG8:"_s + pictureFile(name)});
}

} // namespace mkl::desktop
