#include "platform/thread_object.h"
#include "tests/support/account.h"
#include "tests/support/other_thread.h"
#include "tests/support/signal.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace tests {
namespace {

struct Object {
    Object() { instance.Bind(*this); }

    static Object* ofThread() { return vorlen::ThreadObject<Object>::Get(); }

    vorlen::ThreadObject<Object> instance;
};

// The slot of such objects is made once.
class ThreadObjectWarmUp final : public testing::Environment {
    void SetUp() override { EXPECT_EQ(Object::ofThread(), nullptr); }
};

[[maybe_unused]] const auto* const warmUp =
    testing::AddGlobalTestEnvironment(new ThreadObjectWarmUp);

TEST(ObjectOfThread, is_found_on_its_thread_until_it_is_destroyed) {
    {
        const Object object;
        EXPECT_EQ(Object::ofThread(), &object);
        EXPECT_EQ(onAnotherThread([] { return Object::ofThread(); }), nullptr);
    }
    EXPECT_EQ(Object::ofThread(), nullptr);
}

TEST(ObjectOfThread, is_not_touched_by_a_binding_that_was_never_made) {
    const Object object;
    { const vorlen::ThreadObject<Object> unbound; }
    EXPECT_EQ(Object::ofThread(), &object);
}

class ObjectDestroyedElsewhere : public testing::Test {
protected:
    // Until the program ends, one entry stays behind for each such object.
    ObjectDestroyedElsewhere() { expectBlocksLeft(1); }

    std::unique_ptr<Object> object = std::make_unique<Object>();
};

TEST_F(ObjectDestroyedElsewhere, is_never_found_again) {
    onAnotherThread([this] { object.reset(); });
    EXPECT_EQ(Object::ofThread(), nullptr);
}

TEST_F(ObjectDestroyedElsewhere, does_not_stand_in_the_way_of_the_next) {
    onAnotherThread([this] { object.reset(); });
    {
        const Object next;
        EXPECT_EQ(Object::ofThread(), &next);
    }
    EXPECT_EQ(Object::ofThread(), nullptr);
}

TEST_F(ObjectDestroyedElsewhere, clears_the_pointer_of_the_thread_that_destroys_it) {
    onAnotherThread([this] {
        const Object other;
        object.reset();
        EXPECT_EQ(Object::ofThread(), nullptr);
    });
}

TEST_F(ObjectDestroyedElsewhere, leaves_the_objects_of_other_threads_alone) {
    Signal made;
    Signal destroyed;
    std::thread other([&] {
        const Object own;
        made.raise();
        destroyed.wait();
        EXPECT_EQ(Object::ofThread(), &own);
    });
    made.wait();
    onAnotherThread([this] { object.reset(); });
    destroyed.raise();
    other.join();
}

} // namespace
} // namespace tests
