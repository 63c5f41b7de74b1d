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

void keepPicture(const QString& name) {
    const QString folder = QStringLiteral(MKL_ARTEFACTS_DIR);
    QDir().mkpath(folder);
    runTool(u"import"_s, {u"-window"_s, u"root"_s, folder + u'/' + name + u".png"_s});
}

} // namespace mkl::desktop
