#pragma once
// The figures that the facts-*.json of the test data hold, computed from a catalogue's rows.
#include "dao/Database.h"

#include <QJsonObject>

namespace mkl {

/// The facts of an open catalogue, in the form of the files.
QJsonObject factsOf(dao::Database& database);

/// The facts of a file; empty if it cannot be read.
QJsonObject readFacts(const QString& file);

/// Compares section by section, so that a failure names the figure.
void expectSameFacts(const QJsonObject& actual, const QJsonObject& expected);

} // namespace mkl
