#include "browser/MenuCommands.h"

#include "browser/ArtCatBrowser.h"
#include "browser/ArtCatBrowserPrivate.h"
#include "browser/ArticleRow.h"

#include <algorithm>
#include <array>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

using Hub = ArtCatBrowserPrivate;

struct MenuCommand {
    QStringView entry;
    void (*run)(Hub&);
};

constexpr std::array commands{
    MenuCommand{u"kTV_NewPosition", [](Hub& hub) { hub.categoryOrder->kTV_NewPosition(); }},
    MenuCommand{u"kTV_SortInc", [](Hub& hub) { hub.categoryOrder->kTV_SortInc(); }},
    MenuCommand{u"kTV_SortDesc", [](Hub& hub) { hub.categoryOrder->kTV_SortDesc(); }},
    MenuCommand{u"kTV_New", [](Hub& hub) { hub.categoryEditing->kTV_New(); }},
    MenuCommand{u"kTV_Rename", [](Hub& hub) { hub.categoryEditing->kTV_Rename(); }},
    MenuCommand{u"kTV_Delete", [](Hub& hub) { hub.categoryEditing->kTV_Delete(); }},
    MenuCommand{u"kTV_Activate", [](Hub& hub) { hub.categoryEditing->kTV_Activate(); }},
    MenuCommand{u"kTV_Properties", [](Hub& hub) { hub.menuCommands->kTV_Properties(); }},
    MenuCommand{u"kTV_Close", [](Hub& hub) { hub.menuCommands->close(); }},

    MenuCommand{u"kLV_NewPosition", [](Hub& hub) { hub.articleOrder->kLV_NewPosition(); }},
    MenuCommand{u"kLV_DeletePosition", [](Hub& hub) { hub.articleAssignment->kLV_DeletePosition(); }},
    MenuCommand{u"kLV_SortInc", [](Hub& hub) { hub.articleOrder->kLV_SortInc(); }},
    MenuCommand{u"kLV_SortDesc", [](Hub& hub) { hub.articleOrder->kLV_SortDesc(); }},
    MenuCommand{u"kLV_Activate", [](Hub& hub) { hub.articleActivation->kLV_Activate(); }},
    MenuCommand{u"kLV_ActivateAll", [](Hub& hub) { hub.articleActivation->kLV_ActivateAll(); }},
    MenuCommand{u"kLV_DeActivateAll", [](Hub& hub) { hub.articleActivation->kLV_DeActivateAll(); }},
    MenuCommand{u"kLV_Properties", [](Hub& hub) { hub.menuCommands->kLV_Properties(); }},
    MenuCommand{u"kLV_Close", [](Hub& hub) { hub.menuCommands->close(); }},

    MenuCommand{u"KLVArt_Find", [](Hub& hub) { hub.articleFind->KLVArt_Find(); }},
    MenuCommand{u"KLVArt_Active", [](Hub& hub) { hub.poolFilters->KLVArt_Active(); }},
    MenuCommand{u"KLVArt_InActive", [](Hub& hub) { hub.poolFilters->KLVArt_InActive(); }},
    MenuCommand{u"KLVArt_Marked", [](Hub& hub) { hub.poolFilters->KLVArt_Marked(); }},
    MenuCommand{u"KLVArt_UnCategorized", [](Hub& hub) { hub.poolFilters->KLVArt_UnCategorized(); }},
    MenuCommand{u"KLVArt_Activate", [](Hub& hub) { hub.articleActivation->KLVArt_Activate(); }},
    MenuCommand{u"KLVArt_Properties", [](Hub& hub) { hub.menuCommands->KLVArt_Properties(); }},
    MenuCommand{u"KLVArt_Close", [](Hub& hub) { hub.menuCommands->close(); }},

    MenuCommand{u"KClose_Close", [](Hub& hub) { hub.menuCommands->close(); }},
};

} // namespace

void MenuCommands::run(const QString& entry) {
    const auto command = std::ranges::find(commands, entry, &MenuCommand::entry);
    if (command == commands.end()) return;
    const auto hub = hub_.shared_from_this();
    hub->errorFrame.boundary(entry, [&] { command->run(*hub); });
}

bool MenuCommands::knows(const QString& entry) {
    return std::ranges::find(commands, entry, &MenuCommand::entry) != commands.end();
}

void MenuCommands::kTV_Properties() {
    if (const Ref<Node> node = hub_.ui.TV->SelectedItem())
        Q_EMIT hub_.face.MenuPropertiesClick(node->Tag().toLong(), acbPaneCategoryTree);
}

void MenuCommands::kLV_Properties() {
    if (const Ref<ListItem> item = hub_.ui.LV->SelectedItem())
        Q_EMIT hub_.face.MenuPropertiesClick(articleOfListRow(*item), acbPaneArticleList);
}

void MenuCommands::KLVArt_Properties() {
    if (const Ref<ListItem> item = hub_.ui.LVArt->SelectedItem())
        Q_EMIT hub_.face.MenuPropertiesClick(item->Tag().toLong(), acbPaneArticlePool);
}

void MenuCommands::close() {
    Q_EMIT hub_.face.Quit();
}

} // namespace mkl
