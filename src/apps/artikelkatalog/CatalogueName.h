#pragma once
#include <QString>

namespace mkl {

/// The name under which settings know a catalogue: the absolute path of a file, the address of one on a server.
QString keptName(const QString& name);
/// What windows and messages call a catalogue: "Werkzeug.sqlite", "Werkzeug auf server1".
QString shownName(const QString& name);

} // namespace mkl
