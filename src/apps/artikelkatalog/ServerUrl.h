#pragma once
#include <QString>

namespace mkl {

/// The parts of an address of a catalogue on a server, as a dialog shows them.
struct ServerUrl {
    QString host = {}; ///< or the folder of a socket; empty for this machine
    QString port = {}; ///< empty for the usual one
    QString database = {};
    QString user = {};       ///< empty for the name under which the user is logged in
    QString encryption = {}; ///< sslmode; empty for what the environment says
    QString others = {};     ///< further parameters, encoded as they stand in the address

    static ServerUrl of(const QString& url);
    QString toString() const;

    bool isElsewhere() const; ///< the host is another machine
    /// What an office wants: nobody between two machines reads along or poses as the server.
    QString usualEncryption() const;
};

} // namespace mkl
