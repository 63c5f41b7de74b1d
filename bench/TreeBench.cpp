// Reading a forest of 100,000 categories into the tree, beside the plain way: raw statements and a QTreeWidget.
#include "bench/Articles.h"
#include "bench/RawWalk.h"
#include "bench/Row.h"
#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/DemoCatalogue.h"
#include "controls/TreeView.h"

#include <QTemporaryDir>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Categories = 100000;
constexpr int Runs = 5;

/// A demo catalogue without articles, open, and a browser on it whose tree does not show.
class Forest {
public:
    Forest() {
        mkl::DemoCatalogue demo;
        demo.articles = 0;
        demo.categories = Categories;
        demo.create(file());
        database_ = mkl::openCatalogue(*workspace_, file());
        hub_->state.Backend = database_;
        hub_->ui.TV->hide();
    }

    QString file() const { return folder_.filePath(u"forest.sqlite"_s); }
    mkl::NodeCollection& nodes() const { return hub_->ui.TV->Nodes(); }

    void read() const {
        if (hub_->categoryTree->X_PopulateTV(false) != Categories) qFatal("the tree is incomplete");
    }

private:
    QTemporaryDir folder_;
    mkl::Ref<dao::Workspace> workspace_ = dao::DBEngine::CreateWorkspace();
    mkl::Ref<dao::Database> database_;
    mkl::ArtCatBrowser face_;
    std::shared_ptr<mkl::ArtCatBrowserPrivate> hub_ = std::make_shared<mkl::ArtCatBrowserPrivate>(face_);
};

QString nodeText(const RawNode& node) {
    return u"%1 - %2"_s.arg(node.order, 3, 10, '0'_L1).arg(QString::fromStdString(node.name));
}

void fillWidget(const std::vector<RawNode>& nodes, const std::vector<QString>& texts) {
    QTreeWidget tree;
    std::vector<QTreeWidgetItem*> items(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const int parent = nodes[i].parent;
        items[i] = parent < 0 ? new QTreeWidgetItem(&tree) : new QTreeWidgetItem(items[std::size_t(parent)]);
        items[i]->setText(0, texts[i]);
        items[i]->setData(0, Qt::UserRole, nodes[i].key);
    }
}

} // namespace

Result treeRow() {
    const Forest forest;
    Result result;
    result.work = u"X_PopulateTV(False), demo catalogue of 100,000 categories, tree hidden"_s;
    result.unit = u"s"_s;
    result.goal = 2;
    result.ours = medianSeconds(Runs, [&] { forest.read(); });
    std::vector<RawNode> nodes;
    RawWalk raw(forest.file());
    const double walk = medianSeconds(Runs, [&] { nodes = raw.run(); });
    std::vector<QString> texts;
    for (const RawNode& node : nodes)
        texts.push_back(nodeText(node));
    const double fill = medianSeconds(Runs, [&] { fillWidget(nodes, texts); });
    result.baselines = {{u"SQLite C API walk"_s, walk}, {u"QTreeWidget fill"_s, fill}};
    return result;
}

Result memoryRow() {
    const Forest forest;
    Result result;
    result.work = u"heap of the tree per node, less its text in UTF-8, 100,000 categories"_s;
    result.unit = u"bytes"_s;
    result.goal = 400;
    const double before = heapBytes();
    forest.read();
    double held = heapBytes() - before;
    for (const mkl::Ref<mkl::Node>& node : forest.nodes())
        held -= double(node->Text().toUtf8().size());
    result.ours = held / Categories;
    return result;
}

} // namespace bench
