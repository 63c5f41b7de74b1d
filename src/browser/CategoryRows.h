#pragma once
// The rows of categories as they are stored, whatever the panes still show.
#include "base/Ref.h"
#include "base/types.h"
#include "dao/Database.h"

namespace mkl {

extern const QString categoryTable; ///< its name

/// The table, to be searched by key.
Ref<dao::Recordset> openCategories(const Ref<dao::Database>& backend);

bool categoryExists(const Ref<dao::Database>& backend, Long category);
/// Whether the category hangs below the other one, on whatever level.
bool categoryHangsBelow(const Ref<dao::Database>& backend, Long category, Long ancestor);

} // namespace mkl
