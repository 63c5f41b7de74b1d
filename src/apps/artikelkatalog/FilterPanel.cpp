#include "apps/artikelkatalog/FilterPanel.h"

#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"
#include "controls/TreeView.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace mkl {

FilterPanel::FilterPanel(QWidget* parent)
    : QWidget(parent) {
    auto* form = new QFormLayout;
    filters_ = {{acbPaneArticlePool, addEdit(*form, u"PoolFilter"_s, text(TextId::BrowserNamePool),
                                             u"Artikelname Like 'S*' And [Artikel-Schlüssel] < 1000"_s)},
                {acbPaneCategoryTree,
                 addEdit(*form, u"TreeFilter"_s, text(TextId::BrowserNameTree), u"Kategoriename Like '*werk*'"_s)},
                {acbPaneArticleList, addEdit(*form, u"ListFilter"_s, text(TextId::BrowserNameList), u"Aktiv"_s)}};
    workgroup_ = addEdit(*form, u"WorkgroupFilter"_s, text(TextId::ProgramFilterWorkgroup), u"IN(3,7)"_s);

    auto* applyButton = new QPushButton(text(TextId::ProgramFilterApply), this);
    applyButton->setObjectName(u"ApplyFilters"_s);
    connect(applyButton, &QPushButton::clicked, this, &FilterPanel::applyWanted);
    auto* clearButton = new QPushButton(text(TextId::ProgramFilterClear), this);
    clearButton->setObjectName(u"ClearFilters"_s);
    connect(clearButton, &QPushButton::clicked, this, &FilterPanel::clear);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(clearButton);
    buttons->addWidget(applyButton);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addLayout(buttons);
    column->addStretch();
    setBrowser(nullptr);
}

QLineEdit* FilterPanel::addEdit(QFormLayout& form, const QString& name, const QString& caption,
                                const QString& example) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(name);
    edit->setPlaceholderText(text(TextId::ProgramFilterExample, {example}));
    edit->setClearButtonEnabled(true);
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 24);
    connect(edit, &QLineEdit::returnPressed, this, &FilterPanel::applyWanted);
    form.addRow(caption + u':', edit);
    return edit;
}

void FilterPanel::setBrowser(ArtCatBrowser* browser) {
    browser_ = browser;
    setEnabled(browser != nullptr);
    for (const PaneFilter& filter : filters_)
        filter.edit->setText(browser ? browser->Filter(filter.pane) : QString());
    workgroup_->setText(browser ? browser->WorkgroupFilter() : QString());
}

// A read serves the message queue: the browser may be gone after each of them.
void FilterPanel::apply() {
    if (!browser_ || !isEnabled()) return;
    setEnabled(false);
    QList<acbPanes> panes = setChanged();
    const bool treeIsEmpty = browser_->CategoryTreeView()->Nodes().Count() == 0;
    if (setWorkgroup()) {
        panes = {acbPaneArticlePool, acbPaneArticleList};
        if (treeIsEmpty) panes.prepend(acbPaneCategoryTree);
    }
    for (const acbPanes pane : panes)
        if (browser_) browser_->RefreshPane(pane);
    setEnabled(browser_ != nullptr);
}

QList<acbPanes> FilterPanel::setChanged() {
    QList<acbPanes> changed;
    for (const auto& [pane, edit] : filters_) {
        const QString filter = edit->text().trimmed();
        if (browser_->Filter(pane) == filter) continue;
        browser_->setFilter(pane, filter);
        changed.append(pane);
    }
    return changed;
}

// A tree that has nodes is read again by this alone.
bool FilterPanel::setWorkgroup() {
    const QString typed = workgroup_->text().trimmed();
    const QString filter = typed.isEmpty() ? u"Like '*'"_s : typed;
    if (typed.isEmpty()) workgroup_->setText(filter);
    if (browser_->WorkgroupFilter() == filter) return false;
    browser_->setWorkgroupFilter(filter);
    return true;
}

void FilterPanel::clear() {
    for (const PaneFilter& filter : filters_)
        filter.edit->clear();
    workgroup_->clear();
    Q_EMIT applyWanted();
}

} // namespace mkl
