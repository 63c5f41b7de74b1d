#pragma once
#include "base/Ref.h"

#include <QString>

namespace mkl {

class ArtCatBrowserPrivate;
class Node;
class TreeRead;

/// The category tree: reading it and keeping it up.
class CategoryTree {
public:
    explicit CategoryTree(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Reads the whole tree and selects the kept node or the first. Result: number of nodes; 0 after a failure.
    Long X_PopulateTV(bool ShowStatus);
    /// Statement of the categories that meet Base, the workgroup filter and the pane's filter.
    QString CategoryStatement(const QString& Base) const;
    QString FolderImageKey(bool Active, bool Expanded) const;
    /// Asks whether to go on after the category failed with the current error; 7 is No.
    Long ReportTreeError(const QString& Text, const QString& Key, const QString& ParentKey) const;
    void ShowCategoryCount();

    /// The user expanded or collapsed a node.
    void Expand(Node& node);
    void Collapse(Node& node);

private:
    Long readTree(bool showStatus);
    bool selectKeptNode(const TreeRead& read);
    Ref<Node> keptNode() const;
    void endRead(bool showStatus);
    void showFolder(Node& node, bool expanded);

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
