#pragma once
#include <QtGlobal>
#include <atomic>

namespace dao {

/// What a record set and its clones share beside the rows: rows are numbered from 0 in the sequence of the opening.
class NumberedRows {
public:
    /// How many were visited, counted from the first.
    qsizetype visited = 0;
    /// Tells bookmarks of these rows from all others.
    const quint64 generation = newGeneration();

protected:
    NumberedRows() = default;
    ~NumberedRows() = default;

private:
    static quint64 newGeneration() {
        static std::atomic<quint64> last{0};
        return ++last;
    }
};

} // namespace dao
