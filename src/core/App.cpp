#include "core/App.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

namespace mkl {

QString App::Path() const {
    return QDir::toNativeSeparators(QCoreApplication::applicationDirPath());
}

QString App::EXEName() const {
    return QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
}

QString App::Title() const {
    const QString displayName = QGuiApplication::applicationDisplayName();
    return displayName.isEmpty() ? EXEName() : displayName;
}

App& app() {
    static App instance;
    return instance;
}

} // namespace mkl
