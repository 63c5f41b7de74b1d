#pragma once
#include "controls/TreeView.h"

#include <QString>
#include <vector>

namespace dao {
class Recordset;
}

namespace mkl {

class ArtCatBrowserPrivate;
class TransMark;
class frmNewCat;

/// The tree's menu commands that change categories themselves.
class CategoryEditing {
public:
    explicit CategoryEditing(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    void kTV_New();
    void kTV_Rename();
    /// Deletes the selected category with all below it. A row that is already gone ends it with the transaction left
    /// open.
    void kTV_Delete();
    /// Does what the entry's caption says; inactive a category becomes with all below it, active alone.
    void kTV_Activate();

    void TVActivate_Item(dao::Recordset& Table, Long CatID, bool Active);

private:
    struct NewCategory;

    bool findSender();
    void newCategory(TransMark& mark);
    bool askForCategory(const Node* selected, NewCategory& category) const;
    void showPlaces(frmNewCat& form, const Node& selected) const;
    void storeCategory(const NewCategory& category, Long key) const;
    void addNode(const NewCategory& category, Long key, const Node& selected) const;
    void selectNew(const NewCategory& category, Long key) const;
    bool isGone(Long category) const;
    void rename();
    void deleteCategory(TransMark& mark);
    bool isDeletionWanted(const QString& name, Long key, Long descendants) const;
    Long articlesOf(Long category) const;
    bool deleteRows(Long category, const std::vector<Ref<Node>>& descendants) const;
    void selectNeighbour(Long category) const;
    void activate();

    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
