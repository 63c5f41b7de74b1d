#include "browser/TreeRead.h"

#include "browser/ArtCatBrowserPrivate.h"
#include "browser/NodeText.h"
#include "controls/Asker.h"
#include "dao/Walk.h"

#include <vector>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// Columns of [ARTIKEL/KATEGORIEN].
const QString keyColumn = u"Kategorie-Schlüssel"_s;
const QString nameColumn = u"Kategoriename"_s;
const QString orderColumn = u"Order"_s;
const QString parentColumn = u"Parent"_s;
const QString activeColumn = u"Aktiv"_s;

} // namespace

TreeRead::TreeRead(ArtCatBrowserPrivate& hub)
    : hub_(hub)
    , number_(++hub.state.treeReads) {}

bool TreeRead::isCurrent() const {
    return !hub_.state.closed && hub_.state.treeReads == number_;
}

bool TreeRead::run(dao::Recordset& roots) {
    const dao::Walk walk(*hub_.state.Backend);
    while (!roots.Eof())
        if (!addRoot(roots)) return false;
    return true;
}

// Each step that fails is asked about on its own, and the next one runs on what is there: after a failed Add without
// a node.
bool TreeRead::addRoot(dao::Recordset& roots) {
    row_ = {};
    Ref<Node> node;
    return ErrorFrame::resumeNext(
        [this] { return goOn(); }, //
        [&] { hub_.ui.PB->setValue(roots.AbsolutePosition() + 1); }, [&] { row_.key = roots.value(keyColumn); },
        [&] { row_.text = nodeText(roots.value(orderColumn), roots.value(nameColumn)); },
        [&] { node = hub_.ui.TV->Nodes().Add({}, tvwLast, nodeKey(row_.key), row_.text); },
        [&] { node->setTag(row_.key); },
        [&] { node->setImage(hub_.categoryTree->FolderImageKey(roots.value(activeColumn).toBoolean(), false)); },
        [&] { AddChildCategories(row_.key.toLong()); }, //
        [&] { roots.MoveNext(); });
}

// The stack of the levels stands on the heap: a chain of categories may be longer than a call stack.
void TreeRead::AddChildCategories(Long ParentKey) {
    std::vector<Ref<dao::Recordset>> levels{childrenOf(ParentKey)};
    while (true) {
        dao::Recordset& children = *levels.back();
        if (!children.Eof()) {
            addChild(children);
            levels.push_back(childrenOf(row_.key.toLong()));
            continue;
        }
        children.Close();
        levels.pop_back();
        if (levels.empty()) return;
        levels.back()->MoveNext();
    }
}

void TreeRead::addChild(dao::Recordset& children) {
    row_ = {};
    row_.key = children.value(keyColumn);
    row_.parentKey = children.value(parentColumn);
    row_.text = nodeText(children.value(orderColumn), children.value(nameColumn));
    const Ref<Node> node = hub_.ui.TV->Nodes().Add(nodeKey(row_.parentKey), tvwChild, nodeKey(row_.key), row_.text);
    node->setTag(row_.key);
    node->setImage(hub_.categoryTree->FolderImageKey(children.value(activeColumn).toBoolean(), false));
}

Ref<dao::Recordset> TreeRead::childrenOf(Long parentKey) const {
    const QString statement = hub_.functionLibrary->SqlTools().BuildSelect(
        u"ARTIKEL/KATEGORIEN"_s, u"[Parent]="_s + QString::number(parentKey), orderColumn);
    return hub_.state.Backend->OpenRecordset(statement, dao::dbOpenForwardOnly);
}

bool TreeRead::goOn() const {
    const auto keyText = [](const Variant& key) { return key.isNull() ? QString() : key.toText(); };
    const Long answer = hub_.categoryTree->ReportTreeError(row_.text, keyText(row_.key), keyText(row_.parentKey));
    return answer != vbNo && isCurrent();
}

} // namespace mkl
