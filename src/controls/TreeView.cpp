#include "controls/TreeView.h"

#include "controls/Twips.h"

#include <QHeaderView>
#include <QScopedValueRollback>

namespace mkl {

TreeView::TreeView(QWidget* parent)
    : ItemView(parent)
    , nodes_(*this)
    , model_(nodes_) {
    setHeaderHidden(true);
    setItems(model_);
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { expansionChanged(*model_.nodeOf(index), true); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { expansionChanged(*model_.nodeOf(index), false); });
}

TreeView::~TreeView() {
    dropItems();
}

void TreeView::checkOwn(const Ref<Node>& node) const {
    if (node && node->owner_ != &nodes_) throwError(err::ElementNotFound, {node->Key()});
}

void TreeView::setSelectedItem(const Ref<Node>& node) {
    checkOwn(node);
    if (node) expandAncestors(*node);
    selected_ = node;
    if (awake()) showSelection();
    if (node) scrollToItem(*node);
}

void TreeView::setDropHighlight(const Ref<Node>& node) {
    checkOwn(node);
    setDropTarget(node);
}

Ref<Node> TreeView::HitTest(Single x, Single y) const {
    return model_.nodeOf(indexAtTwips(x, y));
}

bool TreeView::isOnExpander(Single x, Single y) const {
    const QModelIndex index = indexAtTwips(x, y);
    const Ref<Node> node = model_.nodeOf(index);
    if (!node || node->Children() == 0) return false;
    const int right = visualRect(index).left() + rowsOrigin().x();
    return pixelsX(x) < right && pixelsX(x) >= right - indentation();
}

void TreeView::itemChosen(const QModelIndex& index) {
    const Ref<Node> node = model_.nodeOf(index);
    Q_EMIT NodeClick(node.get());
}

// Once around, from the selected node.
QModelIndex TreeView::nextNamed(const std::function<bool(const Item&)>& fits, bool stepsOn) {
    if (nodes_.Count() == 0) return {};
    const Ref<Node> start = selected_ ? selected_ : nodes_.Item(1)->Root();
    Ref<Node> node = selected_ && stepsOn ? nextInSight(start) : start;
    do {
        if (fits(*node)) return model_.indexOf(node.get());
        node = nextInSight(node);
    } while (node != start);
    return fits(*start) ? model_.indexOf(start.get()) : QModelIndex();
}

Ref<Node> TreeView::nextInSight(const Ref<Node>& node) const {
    if (node->Expanded() && node->Children() > 0) return node->Child();
    for (Ref<Node> each = node; each; each = each->Parent())
        if (const Ref<Node> next = each->Next()) return next;
    return node->Root();
}

void TreeView::goTo(const QModelIndex& index) {
    setCurrentIndex(index);
}

void TreeView::restore() {
    // The view keeps expanded nodes by index; the order does not matter while no layout has been made.
    for (const Ref<Node>& node : nodes_)
        if (node->expanded_) expand(model_.indexOf(node.get()));
    showSelection();
}

// What the user selects; what code selects has been noted before.
void TreeView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    ItemView::selectionChanged(selected, deselected);
    if (!showing_ && !selected.isEmpty()) selected_ = model_.nodeOf(selected.indexes().constFirst());
}

// A tree with nodes never loses its selection to the user, also not by a click with Ctrl or beside the rows.
QItemSelectionModel::SelectionFlags TreeView::selectionCommand(const QModelIndex& index, const QEvent*) const {
    if (!index.isValid()) return QItemSelectionModel::NoUpdate;
    return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

void TreeView::setNodeExpanded(Node& node, bool expanded) {
    if (expanded == node.expanded_ || (expanded && node.children_.empty())) return;
    const Ref<Node> alive(&node);
    if (awake())
        QTreeView::setExpanded(model_.indexOf(&node), expanded);
    else
        expansionChanged(node, expanded);
}

void TreeView::expansionChanged(Node& node, bool expanded) {
    if (node.expanded_ == expanded) return;
    const Ref<Node> alive(&node);
    node.expanded_ = expanded;
    if (expanded) makeRoomFor(node);
    if (!expanded && selected_ && selected_->hangsBelow(node)) setSelectedItem(alive);
    Q_EMIT(this->*(expanded ? &TreeView::Expand : &TreeView::Collapse))(&node);
}

void TreeView::expandAncestors(const Node& node) {
    std::vector<Ref<Node>> ancestors;
    for (Ref<Node> each = node.Parent(); each; each = each->Parent())
        ancestors.push_back(each);
    for (auto each = ancestors.rbegin(); each != ancestors.rend(); ++each)
        (*each)->setExpanded(true);
}

void TreeView::showSelection() {
    const QScopedValueRollback<bool> guard(showing_, true);
    const QModelIndex index = model_.indexOf(selected_.get());
    if (index.isValid())
        setCurrentIndex(index);
    else
        selectionModel()->clear();
}

// Deep levels get a column that is wider than the control, and so a scroll bar, instead of no room for their texts.
void TreeView::makeRoomFor(const Node& parent) {
    int level = 1;
    for (const Node* node = &parent; node; node = node->parent_)
        ++level;
    if (level <= deepestLevel_) return;
    deepestLevel_ = level;
    constexpr int readableCharacters = 16;
    header()->setMinimumSectionSize(level * indentation() + readableCharacters * fontMetrics().averageCharWidth());
}

void TreeView::aboutToRemove(const Node& node) {
    const auto goes = [&node](const Item& item) {
        return &item == &node || static_cast<const Node&>(item).hangsBelow(node);
    };
    if (selected_ && goes(*selected_)) {
        Ref<Node> heir = node.Next();
        if (!heir) heir = node.Previous();
        if (!heir) heir = node.Parent();
        setSelectedItem(heir);
    }
    forget(goes);
}

void TreeView::aboutToClear() {
    setSelectedItem(nullptr);
    forget([](const Item&) { return true; });
    deepestLevel_ = 0;
    header()->setMinimumSectionSize(-1);
}

} // namespace mkl
