#include "desktop/EditingWindow.h"

#include "catalogue/CatalogueImport.h"

#include <QPointer>
#include <QTimer>

namespace mkl::desktop {

QString EditingWindow::makeCatalogue() {
    const QString file = folder_.path(u"Garten.sqlite"_s);
    importCatalogue(QStringLiteral(MKL_SOURCE_DIR "/tests/data/catalogue-small.mdb"), file);
    return file;
}

void EditingWindow::SetUp() {
    BrowserWindow::SetUp();
    reader_ = others_->OpenDatabase(folder_.path(u"Garten.sqlite"_s));
}

// A dialog more than there are answers would wait for ever.
void EditingWindow::doAndAnswer(const std::function<void()>& action, const std::vector<Answer>& answers) {
    size_t next = 0;
    QPointer<QWidget> answered;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
        if (!dialog() || dialog() == answered || !dialog()->isActiveWindow()) return;
        answered = dialog();
        if (next < answers.size()) return answers[next++]();
        ADD_FAILURE() << "nobody expects " << dialog()->metaObject()->className();
        dialog()->close();
    });
    user.start(20);
    action();
    EXPECT_TRUE(waitUntil([&] { return next == answers.size() && !dialog(); }));
    if (dialog()) dialog()->close();
}

void EditingWindow::selectCategory(const Ref<Node>& node) const {
    click(textOf(*node));
    ASSERT_TRUE(waitUntil([&] { return tree_->hasFocus() && tree_->SelectedItem() == node; }));
}

void EditingWindow::clickRow(ListView& list, Long row) const {
    click(rowOf(list, row));
    ASSERT_TRUE(waitUntil([&] { return list.hasFocus() && list.SelectedItem() == list.ListItems().Item(row); }));
}

QString EditingWindow::stored(const QString& query) const {
    QStringList values;
    for (const auto rows = reader_->OpenRecordset(query, dao::dbOpenSnapshot); !rows->Eof(); rows->MoveNext())
        values.append(rows->value(0).toText());
    return values.join(u' ');
}

QString EditingWindow::roots() const {
    return stored(u"SELECT [Kategorie-Schlüssel] FROM [ARTIKEL/KATEGORIEN] WHERE Parent Is Null ORDER BY [Order]"_s);
}

QString EditingWindow::below(Long key) const {
    return stored(
        u"SELECT [Kategorie-Schlüssel] FROM [ARTIKEL/KATEGORIEN] WHERE Parent=%1 ORDER BY [Order]"_s.arg(key));
}

QString EditingWindow::ofCategory(Long key, const QString& column) const {
    return stored(u"SELECT [%1] FROM [ARTIKEL/KATEGORIEN] WHERE [Kategorie-Schlüssel]=%2"_s.arg(column).arg(key));
}

QString EditingWindow::articlesOf(Long key) const {
    return stored(
        u"SELECT [Artikel-Schlüssel] & '@' & [Order] FROM ARTKAT WHERE [Kategorie-Schlüssel]=%1 ORDER BY [Order]"_s.arg(
            key));
}

void EditingWindow::expectSoon(const std::function<QString()>& value, const QString& expected) const {
    EXPECT_TRUE(waitUntil([&] { return value() == expected; }))
        << value().toStdString() << " instead of " << expected.toStdString();
}

} // namespace mkl::desktop
