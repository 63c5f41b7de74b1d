#pragma once
#include <QSize>
#include <QStringList>

namespace mkl {

/// What the program was called with.
struct CommandLine {
    QString file;       ///< to open or import, or the address of a catalogue on a server; empty for none
    QString screenshot; ///< picture to write; empty for an ordinary start
    QSize size;         ///< of the window; empty for the remembered one
    int levels = 0;     ///< how far the tree is expanded

    /// Reads the arguments, the program's name first. Ends the process after --help and --version, and with status 2
    /// and a message for what it does not understand. Needs the application object.
    static CommandLine of(const QStringList& arguments);
};

} // namespace mkl
