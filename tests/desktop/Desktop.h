#pragma once
// A real mouse and keyboard for a window on a real display.
#include <QElapsedTimer>
#include <QProcess>
#include <QRect>
#include <QStringList>
#include <functional>
#include <gtest/gtest.h>

namespace mkl::desktop {

/// Serves the event loop until the condition holds; false after 30 seconds.
bool waitUntil(const std::function<bool()>& condition);

/// Runs a desktop tool while this program serves its events. Gives what it printed.
QString runTool(const QString& tool, const QStringList& arguments);

inline QString xdotool(const QStringList& arguments) {
    return runTool(QStringLiteral("xdotool"), arguments);
}

void click(const QPoint& onScreen);
void press(const QString& keys);

/// Keeps a picture of the whole screen among the build's artefacts.
void keepPicture(const QString& name);
/// The same of a part of the screen, with as few colours as a manual needs.
void keepPicture(const QString& name, const QRect& part);

} // namespace mkl::desktop
