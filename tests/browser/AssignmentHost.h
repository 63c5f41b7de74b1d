#pragma once
// A host for the articles of a category.
#include "browser/DatedHost.h"

namespace mkl {

class AssignmentHost : public DatedHost {
protected:
    using DatedHost::DatedHost;

    /// Selects these rows of a list alone.
    void select(ListView& view, std::initializer_list<Long> rows) const {
        view.deselectOthers({});
        for (const Long row : rows)
            view.setSelectedItem(view.ListItems().Item(row));
    }
    QString selectedRow(const ListView& view) const {
        const Ref<ListItem> item = view.SelectedItem();
        return item ? item->Text() + u' ' + item->SubItems(1) : QString();
    }
};

} // namespace mkl
