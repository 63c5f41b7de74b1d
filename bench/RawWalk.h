#pragma once
// The category forest read by the plain C interface of the engine: one cached statement per category.
#include <QString>
#include <string>
#include <vector>

namespace bench {

struct RawNode {
    int parent; ///< position in the list, -1 for a root
    qint32 key;
    qint32 order;
    std::string name;
    bool active;
};

/// All nodes depth first, as the tree of the browser reads them.
std::vector<RawNode> walkForest(const QString& file);

} // namespace bench
