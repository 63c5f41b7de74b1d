#include "dao/CursorFactory.h"

#include "dao/DynasetCursor.h"
#include "dao/Errors.h"
#include "dao/ForwardOnlyCursor.h"
#include "dao/SnapshotCursor.h"

namespace dao {

std::shared_ptr<DynasetRows> dynasetRows(const QuerySource& source) {
    return source.run([&](const jet::Shape& shape) {
        const auto translation = source.plans()->dynaset(shape, source.sql(), *source.connection());
        std::shared_ptr<DynasetRows> rows;
        if (translation->plan.updatable) rows = std::make_shared<DynasetRows>(source, shape, translation);
        return std::pair(rows, translation->keys);
    });
}

std::unique_ptr<Cursor> openCursor(const QuerySource& source, Long type) {
    using Reading = SnapshotRows::Reading;
    if (type == dbOpenDynaset)
        if (auto rows = dynasetRows(source)) return std::make_unique<DynasetCursor>(std::move(rows));
    const Reading reading = type == dbOpenSnapshot ? Reading::WhenNeeded : Reading::AtOnce;
    return cursorOver(std::make_shared<SnapshotRows>(source, reading), type, {});
}

} // namespace dao
