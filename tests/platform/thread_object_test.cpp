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

// Makes the slot, which is made once, before the first test.
class ThreadObjectWarmUp final : public testing::Environment {
    void SetUp() override { EXPECT_EQ(Object::ofThread(), nullptr); }
};

[[maybe_unused]] const auto* const warmUp =
    testing::AddGlobalTestEnvironment(new ThreadObjectWarmUp);

TEST(ThreadObjectTest, finds_an_object_on_its_thread_until_it_is_destroyed) {
    {
        const Object object;
        EXPECT_EQ(Object::ofThread(), &object);
        EXPECT_EQ(onAnotherThread([] { return Object::ofThread(); }), nullptr);
    }
    EXPECT_EQ(Object::ofThread(), nullptr);
}

TEST(ThreadObjectTest, keeps_an_object_when_an_unused_binding_is_destroyed) {
    const Object object;
    { const vorlen::ThreadObject<Object> unbound; }
    EXPECT_EQ(Object::ofThread(), &object);
}

// An object that is destroyed on another thread than its own.
class ThreadObjectElsewhere : public testing::Test {
protected:
    // One entry stays for each such object until the program ends.
    ThreadObjectElsewhere() { expectBlocksLeft(1); }

    std::unique_ptr<Object> object = std::make_unique<Object>();
};

TEST_F(ThreadObjectElsewhere, is_not_found_again_and_lets_another_be_bound) {
    onAnotherThread([this] { object.reset(); });
    EXPECT_EQ(Object::ofThread(), nullptr);
    {
        const Object next;
        EXPECT_EQ(Object::ofThread(), &next);
    }
    EXPECT_EQ(Object::ofThread(), nullptr);
}

TEST_F(ThreadObjectElsewhere, clears_the_pointer_of_the_thread_that_destroys_it) {
    onAnotherThread([this] {
        const Object other;
        object.reset();
        EXPECT_EQ(Object::ofThread(), nullptr);
    });
}

TEST_F(ThreadObjectElsewhere, leaves_the_objects_of_other_threads_alone) {
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
