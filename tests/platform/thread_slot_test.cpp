#include "platform/thread_slot.h"
#include "tests/support/other_thread.h"

#include <gtest/gtest.h>

#include <system_error>
#include <vector>

namespace tests {
namespace {

using IntSlot = vorlen::ThreadSlot<int>;

TEST(ThreadSlotTest, has_a_pointer_for_each_thread_null_at_first) {
    const IntSlot slot;
    int mine = 0;
    IntSlot::Set(&mine);
    EXPECT_EQ(onAnotherThread([] { return IntSlot::Get(); }), nullptr);
    EXPECT_EQ(IntSlot::Get(), &mine);
    IntSlot::Clear();
    EXPECT_EQ(IntSlot::Get(), nullptr);
}

// Another user of thread slots, to which the system gives the one that was just freed.
class NextOwner {
public:
    explicit NextOwner(DWORD freed) {
        while (indexes.empty() || indexes.back() != freed) {
            indexes.push_back(TlsAlloc());
            EXPECT_NE(indexes.back(), TLS_OUT_OF_INDEXES);
        }
        TlsSetValue(freed, &value);
    }
    ~NextOwner() {
        for (const DWORD index : indexes) {
            TlsFree(index);
        }
    }
    NextOwner(const NextOwner&) = delete;
    NextOwner& operator=(const NextOwner&) = delete;

    bool hasItsValue() const { return TlsGetValue(indexes.back()) == &value; }

private:
    std::vector<DWORD> indexes;
    int value = 0;
};

// The slot of the next ThreadSlot: the lowest that is free.
DWORD nextIndex() {
    const DWORD index = TlsAlloc();
    TlsFree(index);
    return index;
}

TEST(ThreadSlotTest, leaves_its_index_to_the_next_owner) {
    const DWORD index = nextIndex();
    int mine = 0;
    {
        const IntSlot slot;
        IntSlot::Set(&mine);
        ASSERT_EQ(TlsGetValue(index), &mine);
    }
    const NextOwner owner(index);
    EXPECT_EQ(IntSlot::Get(), nullptr);
    IntSlot::Clear();
    EXPECT_TRUE(owner.hasItsValue());
    EXPECT_THROW(IntSlot::Set(&mine), std::system_error);
    EXPECT_TRUE(owner.hasItsValue());
}

} // namespace
} // namespace tests
