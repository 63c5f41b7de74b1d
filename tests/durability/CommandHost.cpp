#include "CommandHost.h"

#include "browser/NodeText.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "support/Printing.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

void select(ListView& list, const QList<Ref<ListItem>>& rows) {
    list.setSelectedItem(rows.first());
    for (const Ref<ListItem>& item : list.ListItems())
        item->setSelected(rows.contains(item));
}

} // namespace

int FilledForms::run(QDialog& form) {
    if (!answers.isEmpty()) answers.takeFirst()(form);
    return form.result();
}

CommandHost::CommandHost(ScriptedWorld& world, const QString& file, const dao::OpenOptions& options)
    : world_(world)
    , workspace_(dao::DBEngine::CreateWorkspace())
    , database_(workspace_->OpenDatabase(file, options)) {
    const ErrorHandlerFactory former = setErrorHandlerFactory([this] { return errors_; });
    browser_ = std::make_unique<ArtCatBrowser>();
    setErrorHandlerFactory(former);
    browser_->resize(900, 500);
    browser_->setBackend(database_);
    browser_->setWorkspace(workspace_);
}

// A host gives up what a command has left open.
CommandHost::~CommandHost() {
    while (workspace_->transactionDepth() > 0)
        EXPECT_EQ(errorOf([&] { workspace_->Rollback(); }), 0);
}

void CommandHost::show(Long category) {
    browser_->setSelected(acbPaneCategoryTree, category);
    browser_->Populate();
}

void CommandHost::selectRows(const QList<Long>& places) {
    QList<Ref<ListItem>> rows;
    for (const Long place : places)
        rows.append(row(place));
    select(list(), rows);
}

void CommandHost::selectPool(const QList<Long>& articles) {
    QList<Ref<ListItem>> rows;
    for (const Long article : articles)
        rows.append(pool().ListItems().Item(u"A%1"_s.arg(article)));
    select(pool(), rows);
}

Ref<ListItem> CommandHost::row(Long place) const {
    return list().ListItems().Item(place);
}

Long CommandHost::assignmentAt(Long place) const {
    return row(place)->Tag().toLong();
}

QStringList CommandHost::listRows() const {
    QStringList rows;
    for (const Ref<ListItem>& item : list().ListItems())
        rows.append(u"%1 %2 %3"_s.arg(item->Tag().toLong()).arg(item->Text().toInt()).arg(item->SubItems(1).toInt()));
    return rows;
}

QStringList CommandHost::storedListRows(const QString& file) const {
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(file, {.readOnly = true, .busyTimeoutMilliseconds = 0});
    const QString statement = hub().articlePanes->ListStatement(hub().state.SelectedCategory, true);
    QStringList result;
    const auto rows = database->OpenRecordset(statement, dao::dbOpenSnapshot);
    for (; !rows->Eof(); rows->MoveNext())
        result.append(u"%1 %2 %3"_s.arg(rows->value(u"ArtKatID").toLong())
                          .arg(rows->value(u"Order").toLong())
                          .arg(rows->value(u"Artikel-Schlüssel").toLong()));
    return result;
}

QStringList CommandHost::treeRows() const {
    QStringList rows;
    for (const Ref<Node>& node : tree().Nodes()) {
        const Ref<Node> parent = node->Parent();
        rows.append(u"%1 %2 %3"_s.arg(node->Key(), parent ? parent->Key() : QString(), node->Text()));
    }
    rows.sort();
    return rows;
}

QStringList CommandHost::storedTreeRows(const QString& file) {
    const auto workspace = dao::DBEngine::CreateWorkspace();
    const auto database = workspace->OpenDatabase(file, {.readOnly = true, .busyTimeoutMilliseconds = 0});
    QStringList result;
    const auto rows = database->OpenRecordset(u"ARTIKEL/KATEGORIEN"_s, dao::dbOpenSnapshot);
    for (; !rows->Eof(); rows->MoveNext()) {
        const Variant parent = rows->value(u"Parent");
        result.append(u"%1 %2 %3"_s.arg(nodeKey(rows->value(u"Kategorie-Schlüssel")),
                                        parent.isNull() ? QString() : nodeKey(parent),
                                        nodeText(rows->value(u"Order"), rows->value(u"Kategoriename"))));
    }
    result.sort();
    return result;
}

} // namespace mkl
