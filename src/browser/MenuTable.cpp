#include "browser/MenuTable.h"

#include "base/RunTimeError.h"

#include <algorithm>
#include <array>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr MenuForm menu(QStringView name, TextId caption) {
    return {name, {}, caption, {}};
}

constexpr MenuForm entry(QStringView parent, QStringView name, TextId caption, std::optional<acbMenus> flag = {}) {
    return {name, parent, caption, flag};
}

constexpr MenuForm filter(QStringView name, TextId caption) {
    return {name, u"KLVArt_Filter", caption, acbMenuFilter, true};
}

constexpr MenuForm separator(QStringView parent, QStringView name, std::optional<acbMenus> flag = {}) {
    return {name, parent, {}, flag};
}

constexpr std::array forms{
    menu(u"KTV", TextId::BrowserMenuContextTree),
    entry(u"KTV", u"kTV_NewPosition", TextId::BrowserMenuNewPosition, acbMenuEditPosition),
    separator(u"KTV", u"kTV_Bar0", acbMenuSortAlphabetical),
    entry(u"KTV", u"kTV_Sort", TextId::BrowserMenuSortLevel, acbMenuSortAlphabetical),
    entry(u"kTV_Sort", u"kTV_SortInc", TextId::BrowserMenuAscending, acbMenuSortAlphabetical),
    entry(u"kTV_Sort", u"kTV_SortDesc", TextId::BrowserMenuDescending, acbMenuSortAlphabetical),
    separator(u"KTV", u"kTV_Bar1", abcMenuNew),
    entry(u"KTV", u"kTV_New", TextId::BrowserMenuNew, abcMenuNew),
    entry(u"KTV", u"kTV_Rename", TextId::BrowserMenuRename, acbMenuRename),
    entry(u"KTV", u"kTV_Delete", TextId::BrowserMenuDelete, acbMenuDelete),
    separator(u"KTV", u"kTV_Bar3", acbMenuActivate),
    entry(u"KTV", u"kTV_Activate", TextId::BrowserMenuActivate, acbMenuActivate),
    separator(u"KTV", u"kTV_Bar2", acbMenuProperties),
    entry(u"KTV", u"kTV_Properties", TextId::BrowserMenuProperties, acbMenuProperties),
    separator(u"KTV", u"kTV_Bar4"),
    entry(u"KTV", u"kTV_Close", TextId::BrowserMenuCloseTree, acbMenuQuit),

    menu(u"KLV", TextId::BrowserMenuContextList),
    entry(u"KLV", u"kLV_NewPosition", TextId::BrowserMenuNewPosition, acbMenuEditPosition),
    entry(u"KLV", u"kLV_DeletePosition", TextId::BrowserMenuDeletePosition, acbMenuDelete),
    separator(u"KLV", u"kLV_Bar1", acbMenuSortAlphabetical),
    entry(u"KLV", u"kLV_Sort", TextId::BrowserMenuSortCategory, acbMenuSortAlphabetical),
    entry(u"kLV_Sort", u"kLV_SortInc", TextId::BrowserMenuAscending, acbMenuSortAlphabetical),
    entry(u"kLV_Sort", u"kLV_SortDesc", TextId::BrowserMenuDescending, acbMenuSortAlphabetical),
    separator(u"KLV", u"kLV_Bar3"),
    entry(u"KLV", u"kLV_Activate", TextId::BrowserMenuActivate, acbMenuActivate),
    entry(u"KLV", u"kLV_ActivateAll", TextId::BrowserMenuActivateAll),
    entry(u"KLV", u"kLV_DeActivateAll", TextId::BrowserMenuDeactivateAll),
    separator(u"KLV", u"kLV_Bar2", acbMenuProperties),
    entry(u"KLV", u"kLV_Properties", TextId::BrowserMenuProperties, acbMenuProperties),
    separator(u"KLV", u"kLV_Bar4"),
    entry(u"KLV", u"kLV_Close", TextId::BrowserMenuClose, acbMenuQuit),

    menu(u"KLVArt", TextId::BrowserMenuContextPool),
    entry(u"KLVArt", u"KLVArt_Find", TextId::BrowserMenuFind, acbMenuFind),
    separator(u"KLVArt", u"KLVArt_Bar2", acbMenuFilter),
    entry(u"KLVArt", u"KLVArt_Filter", TextId::BrowserMenuFilter, acbMenuFilter),
    filter(u"KLVArt_Active", TextId::BrowserMenuActive),
    filter(u"KLVArt_InActive", TextId::BrowserMenuInactive),
    separator(u"KLVArt_Filter", u"KLVArt_Filter_Bar1", acbMenuFilter),
    filter(u"KLVArt_Marked", TextId::BrowserMenuMarked),
    filter(u"KLVArt_UnCategorized", TextId::BrowserMenuUncategorized),
    separator(u"KLVArt", u"KLVArt_Bar3", acbMenuActivate),
    entry(u"KLVArt", u"KLVArt_Activate", TextId::BrowserMenuActivate, acbMenuActivate),
    separator(u"KLVArt", u"KLVArt_Bar1", acbMenuProperties),
    entry(u"KLVArt", u"KLVArt_Properties", TextId::BrowserMenuProperties, acbMenuProperties),
    separator(u"KLVArt", u"KLVArt_Bar4"),
    entry(u"KLVArt", u"KLVArt_Close", TextId::BrowserMenuClosePool, acbMenuQuit),

    menu(u"KClose", TextId::BrowserMenuContextClose),
    entry(u"KClose", u"KClose_Close", TextId::BrowserMenuClose),
};

} // namespace

std::span<const MenuForm> menuForms() {
    return forms;
}

MenuEntry::MenuEntry(const MenuForm& form)
    : form_(&form)
    , caption_(form.caption ? text(*form.caption) : u"-"_s) {}

void captionActivation(MenuEntry& entry, bool isActive) {
    entry.setCaption(text(isActive ? TextId::BrowserMenuDeactivate : TextId::BrowserMenuActivate));
}

bool offersActive(const MenuEntry& entry) {
    return entry.Caption() == text(TextId::BrowserMenuActivate);
}

MenuTable::MenuTable()
    : entries_(forms.begin(), forms.end()) {}

const MenuEntry& MenuTable::Item(QStringView name) const {
    const auto found = std::ranges::find_if(
        entries_, [name](const MenuEntry& each) { return each.form().name.compare(name, Qt::CaseInsensitive) == 0; });
    if (found == entries_.end()) throwError(err::ElementNotFound, {name.toString()});
    return *found;
}

bool MenuTable::isSubEntry(const MenuEntry& entry) const {
    const QStringView parent = entry.form().parent;
    return !parent.isEmpty() && !Item(parent).form().parent.isEmpty();
}

MenuEntry& MenuTable::Item(QStringView name) {
    return const_cast<MenuEntry&>(std::as_const(*this).Item(name));
}

} // namespace mkl
