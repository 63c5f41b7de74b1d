#pragma once
// The context menus as data: what entries there are, and how they stand at the moment.
#include "base/Texts.h"
#include "browser/ArtCatBrowserEnums.h"

#include <optional>
#include <span>
#include <vector>

namespace mkl {

/// One row of the table.
struct MenuForm {
    QStringView name;
    QStringView parent;            ///< empty for a menu itself
    std::optional<TextId> caption; ///< a separator has none
    std::optional<acbMenus> flag;  ///< of ShowMenu, by which it shows; none = always
    bool isCheckable = false;
};

/// The menus in their order, each before its entries.
std::span<const MenuForm> menuForms();

/// A menu entry as it stands in one control.
class MenuEntry {
public:
    explicit MenuEntry(const MenuForm& form);

    QString Name() const { return form_->name.toString(); }
    const MenuForm& form() const { return *form_; }
    bool isSeparator() const { return !form_->caption; }

    const QString& Caption() const { return caption_; } ///< "-" of a separator
    void setCaption(const QString& caption) { caption_ = caption; }
    bool Visible() const { return visible_; }
    void setVisible(bool visible) { visible_ = visible; }
    bool Enabled() const { return enabled_; }
    void setEnabled(bool enabled) { enabled_ = enabled; }
    bool Checked() const { return checked_; }
    void setChecked(bool checked) { checked_ = checked; }
    /// Of the entries of a submenu: the state of their flag as "-1" or "0", empty before a menu came up.
    const QString& Tag() const { return tag_; }
    void setTag(const QString& tag) { tag_ = tag; }

private:
    const MenuForm* form_;
    QString caption_;
    QString tag_;
    bool visible_ = true;
    bool enabled_ = true;
    bool checked_ = false;
};

/// Lets the entry offer the other state than the present one.
void captionActivation(MenuEntry& entry, bool isActive);
/// Whether it offers to activate.
bool offersActive(const MenuEntry& entry);

/// The entries of one control.
class MenuTable {
public:
    MenuTable();

    /// The entry of that name, compared without case; error 35601 when there is none.
    MenuEntry& Item(QStringView name);
    const MenuEntry& Item(QStringView name) const;

    /// Whether the entry stands in a submenu.
    bool isSubEntry(const MenuEntry& entry) const;

    auto begin() { return entries_.begin(); }
    auto end() { return entries_.end(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

private:
    std::vector<MenuEntry> entries_;
};

} // namespace mkl
