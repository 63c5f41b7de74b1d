#include "dao/WorkspaceNotifier.h"

namespace dao {

WorkspaceNotifier::~WorkspaceNotifier() = default;

} // namespace dao
