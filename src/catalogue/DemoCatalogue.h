#pragma once
#include "dao/Workspace.h"

#include <QString>
#include <functional>

namespace mkl {

/// A generated catalogue of a hardware trade. The same figures give the same rows everywhere.
struct DemoCatalogue {
    Long articles = 500;
    Long categories = 60;
    quint32 seed = 1;
    /// Called now and then with the rows so far and the number of all; false cancels.
    std::function<bool(qint64 rows, qint64 expected)> progress = {};

    dao::OpenOptions target = {}; ///< how a server is opened

    /// Writes it to a new file or an empty database on a server. 3204 if the catalogue exists, 5 for a negative figure,
    /// 3059 cancelled.
    void create(const QString& file) const;
};

} // namespace mkl
