#pragma once
// The category forest read by the plain C interface of the engine: one cached statement per category.
#include <QString>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace bench {

struct RawNode {
    int parent; ///< position in the list, -1 for a root
    qint32 key;
    qint32 order;
    std::string name;
    bool active;
};

/// An open catalogue. Like the data layer's it stays open between two reads, so that pages are warm for both.
class RawWalk {
public:
    explicit RawWalk(const QString& file);
    ~RawWalk();
    Q_DISABLE_COPY_MOVE(RawWalk)

    /// All nodes depth first, as the tree of the browser reads them.
    std::vector<RawNode> run();

private:
    void add(const RawNode& node);
    std::vector<RawNode> rowsOf(sqlite3_stmt* statement, int parent) const;
    sqlite3_stmt* prepare(const char* text);
    void require(int status) const;

    sqlite3* database_ = nullptr;
    sqlite3_stmt* roots_ = nullptr;
    sqlite3_stmt* children_ = nullptr;
    int keyColumn_ = 0, orderColumn_ = 0, nameColumn_ = 0, activeColumn_ = 0;
    std::vector<RawNode> nodes_;
};

} // namespace bench
