#include "bench/RawWalk.h"

#include <QFile>
#include <sqlite3.h>
#include <stdexcept>

namespace bench {

namespace {

class Walk {
public:
    explicit Walk(const QString& file) {
        const QByteArray name = QFile::encodeName(file);
        require(sqlite3_open_v2(name.constData(), &database_, SQLITE_OPEN_READWRITE, nullptr));
        // The database's own order of texts is not asked for, but its indexes name it.
        sqlite3_collation_needed(database_, nullptr, addByteOrder);
        roots_ = prepare("SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Parent] IS NULL ORDER BY [Order]");
        children_ = prepare("SELECT * FROM [ARTIKEL/KATEGORIEN] WHERE [Parent]=?1 ORDER BY [Order]");
    }
    ~Walk() {
        sqlite3_finalize(roots_);
        sqlite3_finalize(children_);
        sqlite3_close(database_);
    }
    Q_DISABLE_COPY_MOVE(Walk)

    std::vector<RawNode> run() {
        for (const RawNode& root : rowsOf(roots_, -1))
            add(root);
        return std::move(nodes_);
    }

private:
    void add(const RawNode& node) {
        const int place = int(nodes_.size());
        nodes_.push_back(node);
        sqlite3_bind_int(children_, 1, node.key);
        for (const RawNode& child : rowsOf(children_, place))
            add(child);
    }

    std::vector<RawNode> rowsOf(sqlite3_stmt* statement, int parent) {
        std::vector<RawNode> rows;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(statement, nameColumn_));
            rows.push_back({parent, sqlite3_column_int(statement, keyColumn_),
                            sqlite3_column_int(statement, orderColumn_), name ? name : "",
                            sqlite3_column_int(statement, activeColumn_) != 0});
        }
        sqlite3_reset(statement);
        return rows;
    }

    sqlite3_stmt* prepare(const char* text) {
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

    static void addByteOrder(void*, sqlite3* database, int, const char* name) {
        sqlite3_create_collation(database, name, SQLITE_UTF8, nullptr,
                                 [](void*, int leftSize, const void* left, int rightSize, const void* right) {
                                     const std::string_view a(static_cast<const char*>(left), std::size_t(leftSize));
                                     const std::string_view b(static_cast<const char*>(right), std::size_t(rightSize));
                                     return a.compare(b);
                                 });
    }

    void require(int status) {
        if (status != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_));
    }

    sqlite3* database_ = nullptr;
    sqlite3_stmt* roots_ = nullptr;
    sqlite3_stmt* children_ = nullptr;
    int keyColumn_ = 0, orderColumn_ = 0, nameColumn_ = 0, activeColumn_ = 0;
    std::vector<RawNode> nodes_;
};

} // namespace

std::vector<RawNode> walkForest(const QString& file) {
    return Walk(file).run();
}

} // namespace bench
