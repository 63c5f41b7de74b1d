#include "base/Ref.h"
#include "support/Printing.h"

using namespace mkl;

namespace {
struct Probe : RefCounted {
    explicit Probe(int& alive)
        : alive_(alive) {
        ++alive_;
    }
    ~Probe() override { --alive_; }
    int& alive_;
    int value = 5;
};
} // namespace

TEST(Ref, usingAnEmptyVariableIsError91) {
    const Ref<Probe> none;
    EXPECT_EQ(errorOf([&] { (void)none->value; }), err::ObjectNotSet);
    EXPECT_EQ(errorOf([&] { (void)(*none).value; }), err::ObjectNotSet);
}

TEST(Ref, objectLivesAsLongAsAVariableHoldsIt) {
    int alive = 0;
    {
        Ref<Probe> first = makeRef<Probe>(alive);
        Ref<Probe> second = first;
        first.reset();
        EXPECT_EQ(alive, 1);
        second = second; // NOLINT: assigning a variable to itself must be harmless
        EXPECT_EQ(second->value, 5);
    }
    EXPECT_EQ(alive, 0);
}
