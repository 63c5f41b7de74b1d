#pragma once
#include "base/Ref.h"
#include "dao/Database.h"

#include <QString>

namespace mkl {

/// Workgroup filter that admits every sender.
inline constexpr QStringView noWorkgroupFilter = u"Like '*'";

/// Whether the filter admits every sender.
bool admitsEverySender(QStringView workgroupFilter);

/// The first sender that an "IN(…)" of the filter names, if it stands in ABSENDER; otherwise 0.
Long SenderFromWorkgroupFilter(const QString& workgroupFilter, const Ref<dao::Database>& backend);

} // namespace mkl
