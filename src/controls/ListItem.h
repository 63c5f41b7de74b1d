#pragma once
#include "controls/Item.h"

#include <memory>
#include <vector>

namespace mkl {

class ListItemCollection;

/// A row of a ListView, and at once the row of its model. One held by a variable outlives its removal: it keeps its
/// texts, Key, Tag and SmallIcon, but is neither selected nor has it an Index.
class ListItem final : public Item {
public:
    /// Text of the column behind the first one: 1 is the second column. Below 1 is error 5.
    QString SubItems(Long column) const;
    void setSubItems(Long column, const QString& text);
    /// The text of the second column as UTF-8, for walks over many rows; valid until it changes.
    std::string_view SubItemUtf8() const { return secondText_; }

    /// Key of the picture in the list's image list. A key that the list lacks shows no picture.
    QString SmallIcon() const { return image(); }
    void setSmallIcon(const QString& key) { setImage(key); }

    /// Whether the row is among the selected ones. Without MultiSelect, selecting one deselects the others.
    bool Selected() const { return selected_; }
    void setSelected(bool selected);

    Long Index() const; ///< from 1, in the order of the list; 0 once removed
    void EnsureVisible();

protected:
    void rekey(std::string key) override;
    void changed() override;

private:
    friend class ListItemCollection;
    friend class ListModel;
    friend class ListView;

    ListItem(const QString& key, const QString& text)
        : Item(key, text) {}

    QString columnText(Long column) const; // 0 = Text
    std::string& subText(size_t column);
    void detach();

    bool selected_ = false;
    ListItemCollection* owner_ = nullptr;
    std::string secondText_; // most lists have two or three columns
    std::unique_ptr<std::vector<std::string>> furtherTexts_;
};

} // namespace mkl
