#pragma once
// Which item has which key: a flat table, since a large list would pay for a node and its memory per key.
#include <QtGlobal>
#include <string_view>
#include <vector>

namespace mkl {

/// Items by their keys, which the call in KeyOf gives. A key must not change while its item is in the table.
template<class T, class KeyOf>
class KeyTable {
public:
    /// The item of that key or none.
    T* find(std::string_view key) const {
        if (slots_.empty()) return nullptr;
        const size_t slot = slotOf(key, hashOf(key));
        return hashes_[slot] == freeSlot ? nullptr : slots_[slot];
    }

    /// False if the key exists; the table then stays as it is.
    bool insert(T* item) {
        if ((used_ + 1) * 4 > slots_.size() * 3) grow();
        const std::string_view key = KeyOf()(*item);
        const quint32 hash = hashOf(key);
        const size_t slot = slotOf(key, hash);
        if (hashes_[slot] != freeSlot) return false;
        hashes_[slot] = hash;
        slots_[slot] = item;
        ++used_;
        ++count_;
        return true;
    }

    void erase(std::string_view key) {
        if (slots_.empty()) return;
        const size_t slot = slotOf(key, hashOf(key));
        if (hashes_[slot] == freeSlot) return;
        hashes_[slot] = takenOut; // what stands behind it is still found
        slots_[slot] = nullptr;
        --count_;
    }

    void clear() {
        hashes_ = {};
        slots_ = {};
        used_ = count_ = 0;
    }

private:
    static constexpr quint32 freeSlot = 0, takenOut = 1, firstHash = 2;

    /// Keys that follow one another, as numbers do, get neighbouring slots: filling stays within few cache lines.
    static quint32 hashOf(std::string_view key) {
        quint32 hash = 0;
        for (const char c : key)
            hash = hash * 31 + static_cast<uchar>(c);
        return hash < firstHash ? hash + firstHash : hash;
    }

    /// Where the key stands, or the free slot at which its search ends.
    size_t slotOf(std::string_view key, quint32 hash) const {
        const size_t mask = slots_.size() - 1;
        size_t slot = hash & mask;
        while (hashes_[slot] != freeSlot && (hashes_[slot] != hash || KeyOf()(*slots_[slot]) != key))
            slot = (slot + 1) & mask;
        return slot;
    }

    /// Makes room and leaves out what was taken out. The number of slots is a power of 2.
    void grow() {
        size_t size = 16;
        while (size < (count_ + 1) * 2)
            size *= 2;
        std::vector<quint32> formerHashes(size, freeSlot);
        std::vector<T*> formerSlots(size, nullptr);
        formerHashes.swap(hashes_);
        formerSlots.swap(slots_);
        for (size_t former = 0; former < formerSlots.size(); ++former) {
            if (!formerSlots[former]) continue;
            size_t slot = formerHashes[former] & (size - 1);
            while (hashes_[slot] != freeSlot)
                slot = (slot + 1) & (size - 1);
            hashes_[slot] = formerHashes[former];
            slots_[slot] = formerSlots[former];
        }
        used_ = count_;
    }

    std::vector<quint32> hashes_;
    std::vector<T*> slots_;
    size_t used_ = 0;  // slots that are not free
    size_t count_ = 0; // items
};

} // namespace mkl
