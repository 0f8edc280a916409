#pragma once

#include "platform/thread_slot.h"

#include <windows.h>

#include <atomic>
#include <memory>
#include <utility>

namespace vorlen {

// Binds an object to a thread: Get() returns the object on that thread until this member of the
// object is destroyed. The object should be destroyed on the same thread. When another thread
// destroys it, Get() returns null on both threads afterwards. Nothing here waits for a thread.
template <typename T>
class ThreadObject {
public:
    ThreadObject() = default;

    // Intended: clears the calling thread's pointer, even if it points to another object.
    ~ThreadObject() {
        if (entry) {
            entry->object = nullptr;
            Slot::Clear();
            if (entry->thread != GetCurrentThreadId()) {
                KeptEntries::Add(entry.release());
            }
        }
    }
    ThreadObject(const ThreadObject&) = delete;
    ThreadObject& operator=(const ThreadObject&) = delete;

    // The calling thread's object, or null.
    static T* Get() {
        makeSlot();
        const Entry* const found = Slot::Get();
        return found != nullptr ? found->object.load() : nullptr;
    }

    // Binds the object to the calling thread, which must not have an object yet. To be called
    // once. Throws std::bad_alloc, or std::system_error as ThreadSlot::Set() does; nothing is
    // bound then.
    void Bind(T& object) {
        auto bound = std::make_unique<Entry>(&object);
        makeSlot();
        Slot::Set(bound.get());
        entry = std::move(bound);
    }

private:
    // The thread's slot points to this entry. Other threads can clear the entry, but not the slot.
    struct Entry {
        explicit Entry(T* bound) : object(bound) {}

        std::atomic<T*> object;
        const DWORD thread = GetCurrentThreadId();
        Entry* next = nullptr;
    };

    // The entries of objects that another thread destroyed: the slots of the objects' threads
    // still point to them. They are freed together with the slot index.
    struct KeptEntries {
        KeptEntries() = default;
        ~KeptEntries() {
            while (const std::unique_ptr<Entry> kept{first.load()}) {
                first = kept->next;
            }
        }
        KeptEntries(const KeptEntries&) = delete;
        KeptEntries& operator=(const KeptEntries&) = delete;

        static void Add(Entry* added) noexcept {
            added->next = first;
            while (!first.compare_exchange_weak(added->next, added)) {
            }
        }

        static inline std::atomic<Entry*> first = nullptr;
    };

    struct Slot : KeptEntries, ThreadSlot<Entry> {};

    // Function-local: constructed before, and destroyed after, any static object that calls this
    // in its constructor.
    static void makeSlot() { static const Slot slot; }

    std::unique_ptr<Entry> entry;
};

} // namespace vorlen
