// What the members of the browser are for, as designers of forms read it.
#include "base/Texts.h"
#include "browser/ArtCatBrowser.h"

#include <algorithm>
#include <array>

namespace mkl {

namespace {

struct MemberHelp {
    QStringView member;
    TextId text;
};

constexpr std::array members{
    MemberHelp{u"ActivePane", TextId::BrowserHelpActivePane},
    MemberHelp{u"AllowDragDrop", TextId::BrowserHelpAllowDragDrop},
    MemberHelp{u"AppName", TextId::BrowserHelpAppName},
    MemberHelp{u"ArticleListView", TextId::BrowserHelpArticleListView},
    MemberHelp{u"ArticlePoolListView", TextId::BrowserHelpArticlePoolListView},
    MemberHelp{u"Backend", TextId::BrowserHelpBackend},
    MemberHelp{u"CategoryTreeView", TextId::BrowserHelpCategoryTreeView},
    MemberHelp{u"CurrentSenderID", TextId::BrowserHelpCurrentSenderID},
    MemberHelp{u"Edited", TextId::BrowserHelpEdited},
    MemberHelp{u"Filter", TextId::BrowserHelpFilter},
    MemberHelp{u"Helper", TextId::BrowserHelpHelper},
    MemberHelp{u"Imageset", TextId::BrowserHelpImageset},
    MemberHelp{u"ItemClick", TextId::BrowserHelpItemClick},
    MemberHelp{u"ItemSelected", TextId::BrowserHelpItemSelected},
    MemberHelp{u"LeftArticleListView", TextId::BrowserHelpLeftArticleListView},
    MemberHelp{u"LeftCategoryTreeView", TextId::BrowserHelpLeftCategoryTreeView},
    MemberHelp{u"MenuPropertiesClick", TextId::BrowserHelpMenuPropertiesClick},
    MemberHelp{u"PaneClick", TextId::BrowserHelpPaneClick},
    MemberHelp{u"PaneDblClick", TextId::BrowserHelpPaneDblClick},
    MemberHelp{u"PaneResize", TextId::BrowserHelpPaneResize},
    MemberHelp{u"PaneWidth", TextId::BrowserHelpPaneWidth},
    MemberHelp{u"Populate", TextId::BrowserHelpPopulate},
    MemberHelp{u"PositionEditor", TextId::BrowserHelpPositionEditor},
    MemberHelp{u"Quit", TextId::BrowserHelpQuit},
    MemberHelp{u"RefreshItem", TextId::BrowserHelpRefreshItem},
    MemberHelp{u"RefreshPane", TextId::BrowserHelpRefreshPane},
    MemberHelp{u"ReplicaID", TextId::BrowserHelpReplicaID},
    MemberHelp{u"Resize", TextId::BrowserHelpResize},
    MemberHelp{u"Selected", TextId::BrowserHelpSelected},
    MemberHelp{u"ShowArticleList", TextId::BrowserHelpShowArticleList},
    MemberHelp{u"ShowArticlePool", TextId::BrowserHelpShowArticlePool},
    MemberHelp{u"ShowMenu", TextId::BrowserHelpShowMenu},
    MemberHelp{u"ShowStatusBar", TextId::BrowserHelpShowStatusBar},
    MemberHelp{u"WorkgroupFilter", TextId::BrowserHelpWorkgroupFilter},
    MemberHelp{u"Workspace", TextId::BrowserHelpWorkspace},
    MemberHelp{u"hWnd", TextId::BrowserHelpHWnd},
};

} // namespace

QString ArtCatBrowser::memberHelp(const QString& Member) {
    const auto* const found = std::ranges::find(members, QStringView(Member), &MemberHelp::member);
    return found == members.end() ? QString() : text(found->text);
}

} // namespace mkl
