#include "browser/BrowserHost.h"

#include "support/FaultVfs.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

/// Nothing here waits for the disk.
const QString& onAFileWithoutSyncs(const QString& picture) {
    FaultVfs::installAsDefault();
    return picture;
}

} // namespace

BrowserHost::BrowserHost(const QString& picture)
    : catalogue(onAFileWithoutSyncs(picture))
    , formerFactory_(setErrorHandlerFactory([this] { return errors; })) {
    makeBrowser();
}

BrowserHost::~BrowserHost() {
    setErrorHandlerFactory(formerFactory_);
}

void BrowserHost::makeBrowser() {
    browser = std::make_unique<ArtCatBrowser>();
    browser->resize(900, 500);
    browser->setBackend(catalogue.database());
    browser->setWorkspace(catalogue.workspace());
    if (qEnvironmentVariableIsSet("MKL_TEST_EXTRAS")) {
        browser->setChangeNotice(true);
        browser->setEditKeys(true);
        browser->setKeepsView(true);
        browser->setSpringOpenInterval(700);
    }
    events.record(browser.get(), &ArtCatBrowser::ItemSelected, u"ItemSelected"_s);
    events.record(browser.get(), &ArtCatBrowser::ItemClick, u"ItemClick"_s);
}

Ref<Node> BrowserHost::node(Long category) const {
    return tree().Nodes().Item(u"A-%1"_s.arg(category));
}

QString BrowserHost::panel(const QString& key) const {
    return constituent<StatusBar>(u"SB"_s).Panels(key).Text();
}

QStringList BrowserHost::rowsOf(const ListView& view) {
    QStringList rows;
    for (const Ref<ListItem>& item : view.ListItems()) {
        QStringList parts{item->Key(), item->Tag().isNull() ? u"Null"_s : item->Tag().toText(), item->Text()};
        for (Long column = 1; column < view.ColumnHeaders().Count(); ++column)
            parts.append(item->SubItems(column));
        rows.append((parts << item->SmallIcon()).join(u'|'));
    }
    return rows;
}

QStringList BrowserHost::textsOf(const ListView& view) {
    QStringList texts;
    for (const Ref<ListItem>& item : view.ListItems())
        texts.append(item->Text());
    return texts;
}

QStringList BrowserHost::treeLines() const {
    QStringList lines;
    for (const Ref<Node>& node : tree().Nodes()) {
        QString line = node->Text();
        for (Ref<Node> parent = node->Parent(); parent; parent = parent->Parent())
            line.prepend(u"  "_s);
        lines.append(line);
    }
    return lines;
}

QStringList BrowserHost::takeReports() const {
    QStringList lines;
    for (const ErrorReport& report : std::exchange(errors->reports, {}))
        lines.append(report.code == 0 ? u"%1: %2"_s.arg(report.procName).arg(report.number)
                                      : QString::number(report.code));
    return lines;
}

} // namespace mkl
