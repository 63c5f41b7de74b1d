#pragma once
#include "controls/Item.h"
#include "controls/KeyTable.h"

#include <algorithm>
#include <functional>
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
    T* find(std::string_view key) const { return byKey_.find(key); }

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
        if (!item->key_.empty()) byKey_.insert(item.get());
        place(item);
    }

    /// An insertion in two steps: the key, error 35602 if it exists here already, then the item in its place.
    void insertKey(T& item) {
        if (!item.key_.empty() && !byKey_.insert(&item)) throwDoubled(item.key_);
    }
    void insertKnown(size_t place, const Ref<T>& item) {
        closed();
        this->place(item);
        moveLastTo(place);
    }

    /// Puts the item before the one at that place, counted from 0; at the end it is an append.
    void insert(size_t place, const Ref<T>& item) {
        closed();
        append(item);
        moveLastTo(place);
    }

    /// Takes the item out; the caller holds a reference if it still needs it.
    void remove(T& item) {
        if (!item.key_.empty()) byKey_.erase(item.key_);
        ++holes_;
        order_[item.place_].reset();
    }

    void rekey(T& item, const std::string& key) {
        if (key == item.key_) return;
        checkKey(key);
        if (!item.key_.empty()) byKey_.erase(item.key_);
        item.assignKey(key);
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
    struct KeyOf {
        std::string_view operator()(const T& item) const { return item.key_; }
    };

    void checkKey(std::string_view key) const {
        if (find(key)) throwDoubled(key);
    }
    [[noreturn]] static void throwDoubled(std::string_view key) {
        throwError(err::KeyNotUnique, {QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()))});
    }

    void place(const Ref<T>& item) {
        item->place_ = static_cast<quint32>(order_.size());
        order_.push_back(item);
    }
    void moveLastTo(size_t place) {
        if (place + 1 == order_.size()) return;
        std::rotate(order_.begin() + static_cast<std::ptrdiff_t>(place), order_.end() - 1, order_.end());
        number();
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
    KeyTable<T, KeyOf> byKey_;
};

} // namespace mkl
