#pragma once
#include "controls/Item.h"

#include <algorithm>
#include <functional>
#include <unordered_set>
#include <vector>

namespace mkl {

/// The items of a collection in their order, reached by index from 1 or by key. Holds a reference on each.
/// Taking one out leaves a hole that the next look at the order closes, so that many removals cost one pass.
template<class T>
class ItemStore {
public:
    using const_iterator = typename std::vector<Ref<T>>::const_iterator;

    Long count() const { return static_cast<Long>(order_.size() - holes_); }
    const_iterator begin() const { return closed().begin(); }
    const_iterator end() const { return closed().end(); }

    /// The item of that key or none.
    T* find(std::string_view key) const {
        const auto found = byKey_.find(key);
        return found == byKey_.end() ? nullptr : *found;
    }

    /// By number the item at that index, by text the one of that key; error 35601 when there is none.
    T& item(const Variant& index) const {
        T* found = nullptr;
        if (index.isText()) {
            found = find(index.toText().toStdString());
        } else {
            const Long number = index.toLong();
            if (number >= 1 && number <= count()) found = closed()[static_cast<size_t>(number) - 1].get();
        }
        if (!found) throwError(err::ElementNotFound, {index.toText()});
        return *found;
    }

    Long indexOf(const T& item) const {
        closed();
        return static_cast<Long>(item.place_) + 1;
    }

    /// Error 35602 if the item's key exists here already. An empty key is none.
    void checkNew(const T& item) const { checkKey(item.key_); }

    void append(const Ref<T>& item) {
        item->place_ = static_cast<quint32>(order_.size());
        order_.push_back(item);
        if (!item->key_.empty()) byKey_.insert(item.get());
    }

    /// Puts the item before the one at that place, counted from 0; at the end it is an append.
    void insert(size_t place, const Ref<T>& item) {
        closed();
        append(item);
        if (place + 1 == order_.size()) return;
        std::rotate(order_.begin() + static_cast<std::ptrdiff_t>(place), order_.end() - 1, order_.end());
        number();
    }

    /// Takes the item out; the caller holds a reference if it still needs it.
    void remove(T& item) {
        if (!item.key_.empty()) byKey_.erase(byKey_.find(std::string_view(item.key_)));
        ++holes_;
        order_[item.place_].reset();
    }

    void rekey(T& item, std::string key) {
        if (key == item.key_) return;
        checkKey(key);
        if (!item.key_.empty()) byKey_.erase(byKey_.find(std::string_view(item.key_)));
        item.assignKey(std::move(key));
        if (!item.key_.empty()) byKey_.insert(&item);
    }

    /// Gives all items away and is empty.
    std::vector<Ref<T>> takeAll() {
        byKey_.clear();
        closed();
        return std::exchange(order_, {});
    }

    /// Puts the items into the order that the call gives to the vector.
    void reorder(const std::function<void(std::vector<Ref<T>>&)>& arrange) {
        closed();
        arrange(order_);
        number();
    }

private:
    struct KeyHash {
        using is_transparent = void;
        size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
        size_t operator()(const T* item) const { return (*this)(std::string_view(item->key_)); }
    };
    struct KeyEqual {
        using is_transparent = void;
        static std::string_view keyOf(const T* item) { return item->key_; }
        static std::string_view keyOf(std::string_view key) { return key; }
        bool operator()(const auto& left, const auto& right) const { return keyOf(left) == keyOf(right); }
    };

    void checkKey(std::string_view key) const {
        if (find(key))
            throwError(err::KeyNotUnique, {QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()))});
    }

    const std::vector<Ref<T>>& closed() const {
        if (holes_ > 0) {
            std::erase(order_, nullptr);
            holes_ = 0;
            number();
        }
        return order_;
    }

    void number() const {
        for (size_t place = 0; place < order_.size(); ++place)
            order_[place]->place_ = static_cast<quint32>(place);
    }

    mutable std::vector<Ref<T>> order_; // holes are empty references
    mutable size_t holes_ = 0;
    std::unordered_set<T*, KeyHash, KeyEqual> byKey_;
};

} // namespace mkl
