#pragma once
// A plain value in memory that a process shares with the children it forks, also with those that were killed.
#include <new>
#include <sys/mman.h>
#include <type_traits>

namespace mkl {

template<class Value>
class SharedMemory {
    static_assert(std::is_trivially_destructible_v<Value>);

public:
    SharedMemory() {
        void* memory = mmap(nullptr, sizeof(Value), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) throw std::bad_alloc();
        value_ = new (memory) Value;
    }
    ~SharedMemory() { munmap(value_, sizeof(Value)); }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    Value& operator*() const { return *value_; }
    Value* operator->() const { return value_; }

private:
    Value* value_;
};

} // namespace mkl
