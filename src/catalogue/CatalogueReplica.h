#pragma once
// The digit that all keys given out in this copy of a catalogue end in, so that several offices give out keys without
// clashes. It belongs to the database itself: no exchange of rows carries it to another office.
#include "dao/Database.h"

namespace mkl {

/// False where the database holds a number that is no digit: a file of another program.
bool hasReplicaDigit(const dao::Database& database);

/// 0 to 9; 0 in a new catalogue. Asks the database each time. 3421 without a digit.
Long replicaDigit(const dao::Database& database);

/// 5 outside 0 to 9; otherwise errors of Database::setLocalNumber().
void setReplicaDigit(dao::Database& database, Long digit);

} // namespace mkl
