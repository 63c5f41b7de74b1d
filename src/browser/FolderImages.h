#pragma once
// Which icon a category shows. Its active state is kept nowhere else.
#include "browser/ArtCatBrowserEnums.h"

#include <QString>

namespace mkl {

/// Key of a folder's icon: "OrdnerAuf" or "OrdnerZu", "2" for the second set, "On" or "Off".
QString folderImage(bool active, bool expanded, acbImagesets imageset);

/// Whether a node with this icon is active: the icon's key ends in "On".
bool isActiveImage(QStringView image);

} // namespace mkl
