#include "bench/RawWalk.h"

#include <QFile>
#include <stdexcept>
#include <string_view>

namespace bench {

RawWalk::RawWalk(const QString& file) {
    require(sqlite3_open_v2(QFile::encodeName(file).constData(), &database_, SQLITE_OPEN_READWRITE, nullptr));
    roots_ = prepare("SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Parent] IS NULL ORDER BY [Order]");
    children_ = prepare("SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Parent]=?1 ORDER BY [Order]");
}

RawWalk::~RawWalk() {
    sqlite3_finalize(roots_);
    sqlite3_finalize(children_);
    sqlite3_close(database_);
}

std::vector<RawNode> RawWalk::run() {
    nodes_.clear();
    for (const RawNode& root : rowsOf(roots_, -1))
        add(root);
    return std::move(nodes_);
}

void RawWalk::add(const RawNode& node) {
    const int place = int(nodes_.size());
    nodes_.push_back(node);
    sqlite3_bind_int(children_, 1, node.key);
    for (const RawNode& child : rowsOf(children_, place))
        add(child);
}

std::vector<RawNode> RawWalk::rowsOf(sqlite3_stmt* statement, int parent) const {
    std::vector<RawNode> rows;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(statement, nameColumn_));
        rows.push_back({parent, sqlite3_column_int(statement, keyColumn_), sqlite3_column_int(statement, orderColumn_),
                        name ? name : "", sqlite3_column_int(statement, activeColumn_) != 0});
    }
    sqlite3_reset(statement);
    return rows;
}

sqlite3_stmt* RawWalk::prepare(const char* text) {
    sqlite3_stmt* statement = nullptr;
    require(sqlite3_prepare_v2(database_, text, -1, &statement, nullptr));
    for (int column = 0; column < sqlite3_column_count(statement); ++column) {
        const std::string_view name = sqlite3_column_name(statement, column);
        if (name == "Kategorie-Schlüssel") keyColumn_ = column;
        if (name == "Order") orderColumn_ = column;
        if (name == "Kategoriename") nameColumn_ = column;
        if (name == "Aktiv") activeColumn_ = column;
    }
    return statement;
}

void RawWalk::require(int status) const {
    if (status != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_));
}

} // namespace bench
