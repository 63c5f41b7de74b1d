// Record sets against a simple model of them: the same random operations on both, the same answers.
#include "dao/OpenedDatabase.h"

#include <algorithm>
#include <random>

namespace dao {

namespace {

struct ModelRow {
    Long number = 0;
    Long kind = 0;
    bool leftOut = false; // deleted through the record set
    bool lost = false;    // deleted by another program
};

// What a record set does, written down as plainly as possible.
class Model {
public:
    enum class Place { Row, Bof, Eof, Nowhere };

    std::vector<ModelRow> rows;
    int firstAdded = 0;
    Place place = Place::Eof;
    int row = -1;
    int visited = 0;
    bool noMatch = false;
    bool staysAfterFailedFind = true;

    void begin() {
        firstAdded = size();
        const int first = next(-1, 1);
        first < 0 ? go(Place::Eof) : go(Place::Row, first);
    }
    int size() const { return static_cast<int>(rows.size()); }
    bool isEmpty() const { return next(-1, 1) < 0; }
    bool isBof() const { return place == Place::Bof || (place != Place::Row && isEmpty()); }
    bool isEof() const { return place == Place::Eof || (place != Place::Row && isEmpty()); }
    int recordCount() const {
        int count = 0;
        for (int i = 0; i < size(); ++i)
            if (!rows[size_t(i)].leftOut && (i < visited || i >= firstAdded)) ++count;
        return count;
    }
    int position() const { return place == Place::Row ? liveBefore(row) : -1; }
    Long value() const {
        const ModelRow& current = at();
        if (current.leftOut || current.lost) mkl::throwError(3167);
        return current.number;
    }
    Long kind() const { return at().kind; }
    const ModelRow& at() const {
        if (place != Place::Row) mkl::throwError(3021);
        return rows[size_t(row)];
    }

    void moveFirst() {
        if (isEmpty()) mkl::throwError(3021);
        go(Place::Row, next(-1, 1));
    }
    void moveLast() {
        if (isEmpty()) mkl::throwError(3021);
        visited = size();
        go(Place::Row, next(size(), -1));
    }
    void moveNext() {
        if (place == Place::Eof || place == Place::Nowhere) mkl::throwError(3021);
        const int to = next(place == Place::Bof ? -1 : row, 1);
        to < 0 ? go(Place::Eof) : go(Place::Row, to);
    }
    void movePrevious() {
        const bool fromEnd = place == Place::Eof && !isEmpty();
        if (place != Place::Row && !fromEnd) mkl::throwError(3021);
        const int to = next(fromEnd ? size() : row, -1);
        to < 0 ? go(Place::Bof) : go(Place::Row, to);
    }
    void move(int by) {
        if (by == 0) value();
        for (; by > 0; --by) {
            moveNext();
            if (isEof()) return;
        }
        for (; by < 0; ++by) {
            movePrevious();
            if (isBof()) return;
        }
    }
    void setPosition(int wanted) {
        for (int i = 0; wanted >= 0 && i < size(); ++i)
            if (!rows[size_t(i)].leftOut && liveBefore(i) == wanted) return go(Place::Row, i);
        mkl::throwError(3021);
    }
    void find(int mode, Long wanted) {
        int found = -1;
        if (mode >= 2 && place == Place::Nowhere && !isEmpty()) mkl::throwError(3021);
        const auto matches = [&](int i) {
            const ModelRow& candidate = rows[size_t(i)];
            return !candidate.leftOut && !candidate.lost && candidate.kind == wanted;
        };
        const int from = mode == 0 || place == Place::Bof ? 0 : place == Place::Eof ? size() : row + 1;
        const int to = mode == 1 || place == Place::Eof ? size() : place == Place::Bof ? 0 : row;
        if (mode == 0 || mode == 2)
            for (int i = mode == 0 ? 0 : from; i < size() && found < 0; ++i)
                if (matches(i)) found = i;
        if (mode == 1 || mode == 3)
            for (int i = (mode == 1 ? size() : to) - 1; i >= 0 && found < 0; --i)
                if (matches(i)) found = i;
        noMatch = found < 0;
        if (found >= 0)
            go(Place::Row, found);
        else if (!staysAfterFailedFind && !isEmpty())
            go(Place::Nowhere);
    }
    void setBookmark(int to) {
        if (rows[size_t(to)].leftOut) mkl::throwError(3167);
        go(Place::Row, to);
    }

private:
    int next(int from, int step) const {
        for (int i = from + step; i >= 0 && i < size(); i += step)
            if (!rows[size_t(i)].leftOut) return i;
        return -1;
    }
    int liveBefore(int limit) const {
        return static_cast<int>(
            std::count_if(rows.begin(), rows.begin() + limit, [](const ModelRow& r) { return !r.leftOut; }));
    }
    void go(Place to, int number = -1) {
        place = to;
        row = number;
        visited = std::max(visited, number + 1);
    }
};

constexpr int kinds = 6;

class Walk {
public:
    Walk(quint32 seed, int rowCount, Long type, const QString& source)
        : random_(seed)
        , o_("CREATE TABLE T (Nr INTEGER PRIMARY KEY, Art INTEGER);")
        , type_(type) {
        QByteArray rows;
        for (int i = 0; i < rowCount; ++i) {
            const Long kind = pick(kinds);
            model_.rows.push_back({i + 1, kind, false, false});
            rows += QByteArray(i == 0 ? "INSERT INTO T VALUES " : ", ") + '(' + QByteArray::number(i + 1) + ", " +
                    QByteArray::number(kind) + ')';
        }
        if (!rows.isEmpty()) o_.file.run(rows);
        model_.staysAfterFailedFind = type == dbOpenSnapshot;
        rows_ = o_.open(source, type);
        model_.begin();
    }

    void run(int steps) {
        for (int step = 0; step < steps; ++step) {
            const int choice = pick(type_ == dbOpenDynaset ? 18 : 13);
            SCOPED_TRACE("step " + std::to_string(step) + ", operation " + std::to_string(choice));
            choice < 13 ? read(choice) : write(choice);
            compare();
            if (testing::Test::HasFailure()) return;
        }
    }

private:
    int pick(int limit) { return static_cast<int>(random_() % quint32(limit)); }

    template<class Ours, class Theirs>
    void both(Ours&& ours, Theirs&& theirs) {
        ASSERT_EQ(errorOf(ours), errorOf(theirs));
    }

    void read(int choice) {
        switch (choice) {
        case 0: return both([&] { rows_->MoveFirst(); }, [&] { model_.moveFirst(); });
        case 1: return both([&] { rows_->MoveLast(); }, [&] { model_.moveLast(); });
        case 2:
        case 3: return both([&] { rows_->MoveNext(); }, [&] { model_.moveNext(); });
        case 4: return both([&] { rows_->MovePrevious(); }, [&] { model_.movePrevious(); });
        case 5: {
            const int by = pick(9) - 4;
            return both([&] { rows_->Move(by); }, [&] { model_.move(by); });
        }
        case 6: {
            const int to = pick(model_.size() + 3) - 1;
            return both([&] { rows_->setAbsolutePosition(to); }, [&] { model_.setPosition(to); });
        }
        case 7: return takeBookmark();
        case 8: return useBookmark();
        default: return find(choice - 9);
        }
    }

    void find(int mode) {
        const Long kind = pick(kinds + 1);
        const QString criterion = u"Art="_s + QString::number(kind);
        both(
            [&] {
                switch (mode) {
                case 0: return rows_->FindFirst(criterion);
                case 1: return rows_->FindLast(criterion);
                case 2: return rows_->FindNext(criterion);
                default: return rows_->FindPrevious(criterion);
                }
            },
            [&] { model_.find(mode, kind); });
    }

    void takeBookmark() {
        Variant bookmark;
        both([&] { bookmark = rows_->Bookmark(); }, [&] { model_.at(); });
        if (!bookmark.isNull()) bookmarks_.emplace_back(bookmark, model_.row);
    }

    void useBookmark() {
        if (bookmarks_.empty()) return;
        const auto& [bookmark, row] = bookmarks_[size_t(pick(int(bookmarks_.size())))];
        both([&] { rows_->setBookmark(bookmark); }, [&] { model_.setBookmark(row); });
    }

    void write(int choice) {
        const Long kind = pick(kinds);
        switch (choice) {
        case 13:
            return both([&] { edit(kind); },
                        [&] {
                            model_.value();
                            model_.rows[size_t(model_.row)].kind = kind;
                        });
        case 14: return add(kind);
        case 15:
            if (pick(3) > 0) return;
            return both([&] { rows_->Delete(); },
                        [&] {
                            model_.value();
                            model_.rows[size_t(model_.row)].leftOut = true;
                        });
        default: return another(kind);
        }
    }

    void edit(Long kind) {
        rows_->Edit();
        rows_->setValue(u"Art", kind);
        rows_->Update();
    }

    void add(Long kind) {
        const Long number = 1000 + static_cast<Long>(model_.size());
        rows_->AddNew();
        rows_->setValue(u"Nr", number);
        rows_->setValue(u"Art", kind);
        rows_->Update();
        model_.rows.push_back({number, kind, false, false});
        bookmarks_.emplace_back(rows_->LastModified(), model_.size() - 1);
    }

    // Never in the current row, which may have been read already.
    void another(Long kind) {
        if (model_.size() == 0) return;
        const int row = pick(model_.size());
        if (row == model_.row || model_.rows[size_t(row)].leftOut) return;
        ModelRow& changed = model_.rows[size_t(row)];
        const QByteArray condition = " WHERE Nr = " + QByteArray::number(changed.number);
        if (pick(4) == 0) {
            o_.file.run("DELETE FROM T" + condition);
            changed.lost = true;
        } else {
            o_.file.run("UPDATE T SET Art = " + QByteArray::number(kind) + condition);
            changed.kind = kind;
        }
    }

    void compare() {
        ASSERT_EQ(rows_->Bof(), model_.isBof());
        ASSERT_EQ(rows_->Eof(), model_.isEof());
        ASSERT_EQ(rows_->NoMatch(), model_.noMatch);
        ASSERT_EQ(rows_->RecordCount(), model_.recordCount());
        ASSERT_EQ(rows_->AbsolutePosition(), model_.position());
        if (pick(2) == 0) return;
        Variant number, kind;
        both(
            [&] {
                number = rows_->value(u"Nr");
                kind = rows_->value(u"Art");
            },
            [&] { model_.value(); });
        if (number.isNull()) return;
        ASSERT_EQ(number, Variant(model_.value()));
        ASSERT_EQ(kind, Variant(model_.kind()));
    }

    std::mt19937 random_;
    OpenedDatabase o_;
    Long type_;
    Ref<Recordset> rows_;
    Model model_;
    std::vector<std::pair<Variant, int>> bookmarks_;
};

void walkAll(Long type) {
    quint32 seed = 4711;
    for (const int rowCount : {0, 1, 2, 7, 30, 700})
        for (const QString& source : {u"T"_s, u"SELECT Nr, Art FROM T"_s, u"SELECT Nr, Art FROM T ORDER BY Nr"_s})
            for (int round = 0; round < 2; ++round) {
                ++seed;
                SCOPED_TRACE("seed " + std::to_string(seed) + ", rows " + std::to_string(rowCount) + ", " +
                             source.toStdString());
                Walk(seed, rowCount, type, source).run(120);
                if (testing::Test::HasFailure()) return;
            }
}

} // namespace

TEST(RandomWalk, Snapshot) {
    walkAll(dbOpenSnapshot);
}

TEST(RandomWalk, Dynaset) {
    walkAll(dbOpenDynaset);
}

} // namespace dao
