#pragma once
// Addresses of databases on servers: postgresql://user@host:port/database?parameter=value.
#include <QString>

namespace dao {

/// Whether the name is the address of a database on a server, and not the name of a file.
bool isServerAddress(const QString& name);

/// What an address says, or the environment (PGHOST, PGUSER …) in its place.
struct ServerAddress {
    QString host; ///< a name, an IP address or the folder of a socket; empty for the socket of this machine
    QString port;
    QString database;
    QString user;
    QString shown;                  ///< the address for messages and windows
    bool isElsewhere = false;       ///< leads to another machine
    bool mayBeUnencrypted = false;  ///< sslmode does not demand encryption
    bool refusesEncryption = false; ///< sslmode excludes it
};

/// Takes an address apart. 3005 for what is none or has unknown parameters, 3147 for one with a password, which would
/// stand in the list of processes and in lists of recent files.
ServerAddress serverAddress(const QString& address);

} // namespace dao
