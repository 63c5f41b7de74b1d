#pragma once
#include <QSet>
#include <QStringList>

namespace mkl {

class ArtCatBrowserPrivate;
class ItemView;
class ListView;
class TreeView;

/// What the user had expanded and scrolled to in a pane, noted before the pane is read again and brought back, where
/// the rows still exist, before the selection is. It knows nothing unless the control keeps its view.
class KeptView {
public:
    /// Notes what the list shows.
    KeptView(const ArtCatBrowserPrivate& hub, const ListView& list);
    /// Notes what the tree shows and which nodes are expanded.
    KeptView(const ArtCatBrowserPrivate& hub, const TreeView& tree);

    void restore(ListView& list) const;
    void restore(TreeView& tree) const;

private:
    template<class Items>
    void scroll(ItemView& view, const Items& items) const;

    QStringList inSight_;    // keys, from the top down
    QSet<QString> expanded_; // keys
};

} // namespace mkl
