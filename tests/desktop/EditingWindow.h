#pragma once
// A user who edits the garden catalogue in the program's window, with its real dialogs; and what another program reads.
#include "desktop/BrowserWindow.h"

namespace mkl::desktop {

class EditingWindow : public BrowserWindow {
protected:
    EditingWindow() { setAsker(nullptr); } // the user answers

    QString makeCatalogue() override;
    void SetUp() override;

    static QWidget* dialog() { return QApplication::activeModalWidget(); }
    static void type(const QString& typed) { xdotool({u"type"_s, u"--delay"_s, u"20"_s, typed}); }

    using Answer = std::function<void()>;
    /// Does what opens dialogs one after the other; the user answers each as soon as it has the keyboard.
    static void doAndAnswer(const std::function<void()>& action, const std::vector<Answer>& answers);
    static void pressAndAnswer(const QString& keys, const Answer& answer) {
        doAndAnswer([&] { press(keys); }, {answer});
    }

    void selectCategory(const Ref<Node>& node) const;
    Ref<Node> category(Long key) const { return tree_->Nodes().Item(u"A-%1"_s.arg(key)); }
    void clickRow(ListView& list, Long row) const;
    ListView& list() const { return *browser().ArticleListView(); }
    ListView& pool() const { return *browser().ArticlePoolListView(); }

    /// What another program reads: the first column of the rows.
    QString stored(const QString& query) const;
    QString roots() const;
    /// The categories of that parent.
    QString below(Long key) const;
    QString ofCategory(Long key, const QString& column) const;
    /// Its articles as "article@position".
    QString articlesOf(Long key) const;
    void expectSoon(const std::function<QString()>& value, const QString& expected) const;

    Ref<dao::Workspace> others_ = dao::DBEngine::CreateWorkspace();
    Ref<dao::Database> reader_;
};

} // namespace mkl::desktop
