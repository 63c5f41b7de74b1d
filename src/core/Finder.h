#pragma once
#include "core/FindDialog.h"
#include "dao/Database.h"

namespace mkl {

/// A control's way to the article search.
class Finder final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    void setDatabase(const Ref<dao::Database>& database) { database_ = database; }
    const Ref<dao::Database>& Database() const { return database_; }

    /// The search dialog, made at the first call.
    Ref<mkl::FindDialog> FindDialog();

Q_SIGNALS:
    /// The search dialog found a record.
    void RecordFound(const mkl::Variant& Bookmark);

private:
    Ref<dao::Database> database_;
    Ref<mkl::FindDialog> dialog_;
};

} // namespace mkl
