#pragma once
#include <QHash>
#include <list>
#include <utility>

namespace dao {

/// A bounded map that forgets what was not asked for longest.
template<class Key, class Value>
class LruCache {
public:
    explicit LruCache(qsizetype capacity)
        : capacity_(capacity) {}

    /// nullptr if it is not there; holds until the next insert() or clear().
    Value* find(const Key& key) {
        const auto found = index_.constFind(key);
        if (found == index_.cend()) return nullptr;
        entries_.splice(entries_.begin(), entries_, *found);
        return &entries_.front().second;
    }

    /// For a key that is not there yet.
    Value& insert(const Key& key, Value value) {
        if (size() >= capacity_) {
            index_.remove(entries_.back().first);
            entries_.pop_back();
        }
        entries_.emplace_front(key, std::move(value));
        index_.insert(key, entries_.begin());
        return entries_.front().second;
    }

    void clear() {
        index_.clear();
        entries_.clear();
    }

    qsizetype size() const { return index_.size(); }

private:
    using Entries = std::list<std::pair<Key, Value>>;

    qsizetype capacity_;
    Entries entries_;
    QHash<Key, typename Entries::iterator> index_;
};

} // namespace dao
