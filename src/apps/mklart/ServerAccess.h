#pragma once
#include "dao/Workspace.h"

#include <functional>
#include <optional>

namespace mkl {

/// Asks somebody for a password; nothing where it is not given. nullptr where there is nobody to be asked.
using PasswordQuestion = std::function<std::optional<QString>(const QString& prompt)>;

/// What lets this program into a database: the options, and for a server the password if it demands one and the
/// environment has none. Asks at most three times, and once for all databases of a user on a server. Warns on standard
/// error before a connection to another machine that may be unencrypted. 3148 where nobody gives a password; otherwise
/// errors of Workspace::OpenDatabase. The options as they are for a file.
dao::OpenOptions accessTo(const QString& name, const dao::OpenOptions& options, const PasswordQuestion& question);
/// The same, asking on the terminal if standard input is one.
dao::OpenOptions accessTo(const QString& name, const dao::OpenOptions& options = {});

} // namespace mkl
