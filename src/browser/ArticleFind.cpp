#include "browser/ArticleFind.h"

#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/dialogs/frmAddArticleFind.h"
#include "controls/Asker.h"
#include "core/MessageService.h"
#include "core/NameSearch.h"

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

// Coded messages.
constexpr Long searchEnded = 1055;
constexpr Long searchStopped = 1056;
constexpr Long searchCounts = 1057;

} // namespace

void ArticleFind::KLVArt_Find() {
    hub_.errorFrame.reader(u"FindArticle"_s, [this] { find(); });
}

bool ArticleFind::askForTerm(QString& term) const {
    const Ref<FindDialog> dialog = hub_.m_Finder->FindDialog(); // the control may be closed while it is shown
    dialog->setMode(FindDialog::AskForTerm);
    dialog->setFieldName(u"Artikelname"_s);
    dialog->setOwnerWindow(&hub_.face);
    if (!dialog->Show()) return false;
    term = dialog->Text();
    return !term.isEmpty();
}

// Found before the first one is shown: meanwhile the host may do anything with the rows.
std::vector<Ref<ListItem>> ArticleFind::hits(const NameSearch& search) const {
    std::vector<Ref<ListItem>> found;
    for (const Ref<ListItem>& item : hub_.ui.LVArt->ListItems())
        if (search.finds(item->SubItemUtf8())) found.push_back(item);
    return found;
}

void ArticleFind::find() {
    // 1., 2.
    QString term;
    if (!askForTerm(term) || hub_.state.closed) return;
    // 3.
    const NameSearch search(term);
    Counts counts;
    bool isStopped = false;
    {
        // 4.
        frmAddArticleFind form(&hub_.face);
        form.A_OwnerHwnd(&hub_.face);
        form.A_Lib(hub_.functionLibrary);
        // 5.
        for (const Ref<ListItem>& item : hits(search)) {
            isStopped = !showHit(*item, form, counts);
            if (hub_.state.closed) return;
            if (isStopped) break;
        }
    }
    // 9.
    const QString message = result(isStopped, counts);
    messageService().ShowCoded(0, vbInformation, message);
    // 10.
    if (!hub_.state.closed) hub_.paneStatus->ShowPoolStatus(-1);
}

// False if the user stops.
bool ArticleFind::showHit(ListItem& item, frmAddArticleFind& form, Counts& counts) const {
    if (item.Index() == 0) return true; // another read has taken it away
    // 6.
    ++counts.Found;
    item.EnsureVisible();
    item.setSelected(true);
    if (!hub_.serveQueue()) return false;
    form.txtArtikelname.setText(item.SubItems(1));
    form.txtArtNr.setText(QString::number(item.Text().toInt()));
    form.Show();
    if (hub_.state.closed) return false;
    // 7.
    if (form.optCancel.Value()) {
        item.setSelected(false);
        return false;
    }
    // 8.
    const bool isWanted = form.optMark(0).Value();
    item.setSelected(isWanted);
    if (isWanted) ++counts.Marked;
    return true;
}

QString ArticleFind::result(bool isStopped, const Counts& counts) const {
    const ErrorHandler& handler = *hub_.errorFrame.handler();
    const QString figures = handler.MessageText(searchCounts, counts.Found, counts.Marked);
    if (!isStopped) return handler.MessageText(searchEnded) + u'\n' + figures;
    const QString stopped = handler.MessageText(searchStopped);
    return counts.Marked > 0 ? stopped + u'\n' + figures : stopped;
}

} // namespace mkl
