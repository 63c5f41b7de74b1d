#include "browser/CategoryTransfer.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/CategoryCopy.h"
#include "browser/CategoryRows.h"
#include "browser/NodeText.h"
#include "browser/TreeNodes.h"
#include "browser/dialogs/frmArtCatBrowserOrder.h"
#include "controls/Asker.h"
#include "core/MessageService.h"

#include <array>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// Coded messages.
constexpr Long swapPositions = 1024;
constexpr Long moveToPosition = 1025;
constexpr Long makeSubcategory = 1032;
constexpr Long swapCategories = 1035;
constexpr Long moveBefore = 1036;
constexpr Long ownSubcategory = 1041;

constexpr Long question = vbYesNo | vbQuestion;

bool areOnOneLevel(const Node& node, const Node& other) {
    return node.FirstSibling()->Key() == other.FirstSibling()->Key();
}

/// The parent of what stands beside the node; Null at the top level.
Variant parentOf(const Node& node) {
    const Ref<Node> parent = node.Parent();
    return parent ? Variant(parent->Tag().toLong()) : Variant();
}

} // namespace

Long CategoryTransfer::CategoryDropChoice(const Node& Node, const mkl::Node& TargetNode) const {
    const ErrorHandler& texts = *hub_.errorFrame.handler();
    const QString name = NameFromNodeText(Node.Text());
    const QString targetName = NameFromNodeText(TargetNode.Text());
    const Long position = OrderFromNodeText(Node.Text());
    const Long targetPosition = OrderFromNodeText(TargetNode.Text());
    const QString below = texts.MessageText(makeSubcategory, name, targetName);
    if (areOnOneLevel(Node, TargetNode)) {
        constexpr std::array choices{Nothing, SwapWithinLevel, MoveWithinLevel, MakeSubcategory};
        return choices.at(
            static_cast<size_t>(OrderDialog(&hub_.face, texts.MessageText(swapPositions, position, targetPosition),
                                            texts.MessageText(moveToPosition, position, targetPosition), below)));
    }
    constexpr std::array choices{Nothing, SwapLevels, MoveToLevel, MakeSubcategory};
    return choices.at(static_cast<size_t>(OrderDialog(&hub_.face, texts.MessageText(swapCategories, name, targetName),
                                                      texts.MessageText(moveBefore, name, targetName), below)));
}

void CategoryTransfer::TVDragCategory(Node& Node, mkl::Node& TargetNode) {
    TransMark mark(hub_.state.Workspace);
    const auto body = [&] {
        // 2.
        const auto choice = static_cast<Choice>(CategoryDropChoice(Node, TargetNode));
        if (choice != Nothing && !hub_.state.closed) transfer(Node, TargetNode, choice, mark);
    };
    const auto afterFailure = [this] {
        if (!hub_.state.closed) hub_.categoryTree->X_PopulateTV(true);
    };
    hub_.errorFrame.command(u"TVDragCategory"_s, mark, body, afterFailure);
}

void CategoryTransfer::transfer(Node& node, Node& target, Choice choice, TransMark& mark) {
    // 1.
    const Long article = hub_.state.SelectedListArticle;
    const Ref<Node> previous = node.Previous();
    const Ref<Node> oldNeighbour = previous ? previous : node.Next();
    const Long category = node.Tag().toLong();
    const bool isSwap = choice == SwapWithinLevel || choice == SwapLevels;
    // 4.
    mark.begin();
    const bool isAllowed = isSwap ? maySwap(node, target, mark)
                                  : choice == MoveWithinLevel ||
                                        mayHang(category, choice == MakeSubcategory ? target.Tag() : parentOf(target),
                                                mark, u"TVDragCategory"_s);
    if (hub_.state.closed) return;
    if (isAllowed) {
        // 3., 5. to 8.
        const bool done = isSwap ? hub_.categoryOrder->SwapCategories(node, target)
                                 : store(*moveNode(node, target, choice), oldNeighbour.get(), choice);
        if (hub_.state.closed || !done) return mark.rollbackIfOpen(); // closed: while the user read of a failure
        // 9.
        mark.commit();
        hub_.state.Edited = true;
    }
    hub_.categoryTree->X_PopulateTV(true);
    if (hub_.state.closed) return;
    hub_.selection->LetSelected(acbPaneArticleList, article);
    const Ref<Node> selected = hub_.state.closed ? nullptr : hub_.ui.TV->SelectedItem();
    if (selected) selected->EnsureVisible();
}

Ref<Node> CategoryTransfer::moveNode(Node& node, Node& target, Choice choice) const {
    TreeView& tree = *hub_.ui.TV;
    const Ref<Node> moved = &node;
    const Ref<Node> neighbour = &target;
    const bool isBehind = OrderFromNodeText(target.Text()) > OrderFromNodeText(node.Text());
    const TreeRelationshipConstants relationship = choice == MakeSubcategory           ? tvwChild
                                                   : choice != MoveToLevel && isBehind ? tvwNext
                                                                                       : tvwPrevious;
    tree.Nodes().Remove(node.Key());
    return TV_AddNode(tree, neighbour->Index(), relationship, moved->Key(), moved->Text(), moved->Tag(),
                      moved->Image());
}

// Who numbers a level or sets a parent tells a failure himself, and the rest is stored all the same.
bool CategoryTransfer::store(const Node& moved, const Node* oldNeighbour, Choice choice) const {
    if (choice != MoveWithinLevel && oldNeighbour) hub_.categoryOrder->OrderCategory(*oldNeighbour, false);
    if (!hub_.state.closed) hub_.categoryOrder->OrderCategory(moved, false);
    if (choice != MoveWithinLevel && !hub_.state.closed)
        hub_.categoryOrder->EditParent(moved.Tag().toLong(), parentOf(moved));
    return !hub_.state.closed;
}

bool CategoryTransfer::mayHang(Long category, const Variant& parent, TransMark& mark, const QString& procName) const {
    if (parent.isNull()) return true;
    const Long above = parent.toLong();
    const bool isOwn = above == category || categoryHangsBelow(hub_.state.Backend, above, category);
    if (!isOwn && categoryExists(hub_.state.Backend, above)) return true;
    mark.rollbackIfOpen(); // others shall not wait until the user has read the message
    if (isOwn)
        messageService().ShowCoded(ownSubcategory, vbCritical);
    else
        hub_.reportVanishedRecord(procName);
    return false;
}

bool CategoryTransfer::maySwap(const Node& node, const Node& target, TransMark& mark) const {
    const QString procName = u"TVDragCategory"_s;
    return mayHang(node.Tag().toLong(), parentOf(target), mark, procName) &&
           mayHang(target.Tag().toLong(), parentOf(node), mark, procName);
}

Long CategoryTransfer::TVDragCategory_Copy(const Node& Node, const mkl::Node& TargetNode) {
    Long newKey = 0;
    TransMark mark(hub_.state.Workspace);
    hub_.errorFrame.command(u"TVDragCategory_Copy"_s, mark, [&] {
        const Long category = Node.Tag().toLong();
        const Long target = TargetNode.Tag().toLong();
        // 2.
        const Long order = TargetNode.Children() + 1;
        // 1.
        if (!isCopyWanted(NameFromNodeText(Node.Text()), NameFromNodeText(TargetNode.Text()))) return;
        if (!hub_.state.closed) newKey = copy(category, target, order, mark);
    });
    return newKey;
}

bool CategoryTransfer::isCopyWanted(const QString& name, const QString& targetName) const {
    const Ref<ErrorHandler> handler = hub_.errorFrame.handler(); // the control may be closed while the user thinks
    return handler->AskUser(text(TextId::BrowserCopyCategory, {name, targetName}), question) == vbYes;
}

Long CategoryTransfer::copy(Long category, Long target, Long order, TransMark& mark) const {
    // 3.
    mark.begin();
    if (!mayHang(category, target, mark, u"TVDragCategory_Copy"_s)) return 0;
    // 4. to 6.
    CategoryCopy run(hub_);
    const Long newKey = run.copy(category, target, order);
    if (hub_.state.closed) { // while the user read of a failure
        mark.rollbackIfOpen();
        return 0;
    }
    // 7.
    mark.commit();
    return newKey;
}

} // namespace mkl
