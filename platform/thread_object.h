#pragma once

#include "platform/thread_slot.h"

#include <windows.h>

#include <atomic>
#include <memory>
#include <utility>

// Makes an object the calling thread's T, which is found on that thread until this binding, a
// member of the object, is destroyed. That belongs on the same thread. If it happens on another one
// all the same, the object is never found again either. Nothing here waits for another thread.
template <typename T>
class ThreadObject {
public:
    ThreadObject() = default;

    // Clears the calling thread's pointer, whether or not it is to this object.
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

    // To be called once, on a thread that has no object. Throws std::system_error, as
    // ThreadSlot::Set() does, or std::bad_alloc; the thread has no object then.
    void Bind(T& object) {
        auto bound = std::make_unique<Entry>(&object);
        makeSlot();
        Slot::Set(bound.get());
        entry = std::move(bound);
    }

private:
    // What the thread's pointer leads to. The pointer itself can be cleared on its own thread only.
    struct Entry {
        explicit Entry(T* bound) : object(bound) {}

        std::atomic<T*> object;
        const DWORD thread = GetCurrentThreadId();
        Entry* next = nullptr;
    };

    // The entries of objects that were destroyed on other threads than their own, which still lead
    // to them. They are freed with the slot.
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

    // Function-local: made before, and destroyed after, every static object that uses it in its
    // constructor.
    static void makeSlot() { static const Slot slot; }

    std::unique_ptr<Entry> entry;
};
