#pragma once
// The program's window with a catalogue on a real display, and its browser's events as lines.
#include "TestFolder.h"
#include "apps/artikelkatalog/MainWindow.h"
#include "browser/ArtCatBrowser.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "desktop/Desktop.h"
#include "support/Printing.h"
#include "support/ScriptedAsker.h"

#include <QApplication>
#include <QSettings>

namespace mkl::desktop {

using namespace Qt::StringLiterals;

class BrowserWindow : public ::testing::Test {
protected:
    void SetUp() override;

    /// The catalogue that SetUp shows.
    virtual QString makeCatalogue() { return folder_.demo(u"Werkzeug.sqlite"_s, 60); }

    ArtCatBrowser& browser() const { return *window_.browser(); }
    Ref<Node> rootWithChildren() const;

    /// Where the node's row is, in the viewport's coordinates.
    QRect indexOf(const Node& node) const;
    QPoint textOf(const Node& node) const { return tree_->viewport()->mapToGlobal(indexOf(node).center()); }
    QPoint branchOf(const Node& node) const;
    /// The middle of a row of a list, from 1, in the column of the name.
    static QPoint rowOf(const ListView& list, int row);

    TestFolder folder_;
    QSettings settings_{folder_.path(u"settings.ini"_s), QSettings::IniFormat};
    ScriptedAsker asker_;
    MainWindow window_{settings_};
    TreeView* tree_ = nullptr;
    QStringList selected_; ///< "key in pane" of each ItemSelected of the tree
    QStringList clicked_;  ///< the same of each ItemClick
};

} // namespace mkl::desktop
