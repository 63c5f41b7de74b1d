#pragma once
#include "apps/mklart/QueryResult.h"

namespace mkl {

/// A table for people: columns as wide as their widest cell, numbers at the right, the number of rows below.
void printTable(const QueryResult& result);

/// One line: {"columns": […], "rows": [[…], …]}.
void printJson(const QueryResult& result);

/// Columns that the text takes on a terminal: none for marks above a letter, two for a wide one.
qsizetype displayWidth(QStringView text);

} // namespace mkl
