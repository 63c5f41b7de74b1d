#pragma once
// A small tree on a real window, and a record of its events.
#include "controls/TreeView.h"
#include "support/Printing.h"

#include <QApplication>
#include <QStringList>

namespace mkl {

using namespace Qt::StringLiterals;

class TreeFixture : public ::testing::Test {
protected:
    TreeFixture() {
        tree.resize(300, 400);
        const auto note = [this](const char* event) {
            return [this, event](Node* node) { log << QString::fromLatin1(event) + u' ' + node->Key(); };
        };
        QObject::connect(&tree, &TreeView::NodeClick, note("NodeClick"));
        QObject::connect(&tree, &TreeView::Expand, note("Expand"));
        QObject::connect(&tree, &TreeView::Collapse, note("Collapse"));
    }

    /// Two roots a and b; below a: a1 (with a11) and a2.
    void fill() {
        add({}, u"a"_s);
        add({}, u"b"_s);
        add(u"a"_s, u"a1"_s);
        add(u"a"_s, u"a2"_s);
        add(u"a1"_s, u"a11"_s);
    }

    void show() {
        tree.show();
        QApplication::processEvents();
    }

    Ref<Node> add(const Variant& parent, const QString& key) {
        return tree.Nodes().Add(parent, tvwChild, key, u"001 - "_s + key);
    }

    Ref<Node> node(const QString& key) const { return tree.Nodes().Item(key); }
    static QString keyOf(const Ref<Node>& node) { return node ? node->Key() : u"-"_s; }

    /// Keys in the order of adding.
    QStringList order() const {
        QStringList keys;
        for (const Ref<Node>& each : tree.Nodes())
            keys << each->Key();
        return keys;
    }

    /// Keys of a level from its first node on.
    static QStringList level(Ref<Node> first) {
        QStringList keys;
        for (; first; first = first->Next())
            keys << first->Key();
        return keys;
    }

    QPoint centre(const QString& key) const { return tree.visualRect(indexOf(key)).center(); }

    /// The index of a visible node, found as a user finds it: by its text.
    QModelIndex indexOf(const QString& key) const {
        const QModelIndexList found = tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, node(key)->Text(),
                                                          1, Qt::MatchExactly | Qt::MatchRecursive);
        return found.value(0);
    }

    TreeView tree;
    QStringList log;
};

} // namespace mkl
