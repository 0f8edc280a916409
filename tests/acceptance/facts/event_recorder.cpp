#include "tests/acceptance/facts/event_recorder.h"

#include "tests/acceptance/facts/answers.h"
#include "tests/fixtures/message_pump.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>

namespace tests {

thread_local std::vector<RecordedEvent> EventRecorder::all;

namespace {

std::string nameOf(const RecordedEvent& event) {
    static const std::map<DWORD, std::string> names{
        {EVENT_OBJECT_DESTROY, "DESTROY"},
        {EVENT_OBJECT_SHOW, "SHOW"},
        {EVENT_OBJECT_HIDE, "HIDE"},
        {EVENT_OBJECT_REORDER, "REORDER"},
        {EVENT_OBJECT_FOCUS, "FOCUS"},
        {EVENT_OBJECT_STATECHANGE, "STATECHANGE"},
        {EVENT_OBJECT_NAMECHANGE, "NAMECHANGE"},
        {EVENT_OBJECT_CLOAKED, "CLOAKED"},
        {EVENT_OBJECT_UNCLOAKED, "UNCLOAKED"},
        {EVENT_OBJECT_PARENTCHANGE, "PARENTCHANGE"},
        {EVENT_OBJECT_LOCATIONCHANGE, "LOCATIONCHANGE"},
    };
    static const std::map<LONG, std::string> objects{
        {OBJID_WINDOW, "window"}, {OBJID_CARET, "caret"}, {OBJID_CLIENT, "client"}};
    const auto name = names.find(event.event);
    const auto object = objects.find(event.object);
    return (name != names.end() ? name->second : hexadecimal(static_cast<HRESULT>(event.event))) +
           ' ' +
           (object != objects.end() ? object->second : "object " + std::to_string(event.object)) +
           (event.child != CHILDID_SELF ? " child" : "");
}

// What EventRecorder::receiveAll announces.
constexpr DWORD fenceEvent = EVENT_OBJECT_NAMECHANGE;
constexpr LONG firstFence = 1'000;

bool isFence(const RecordedEvent& event) {
    return event.event == fenceEvent && event.child >= firstFence;
}

bool changesWindow(const RecordedEvent& event) {
    return event.event == EVENT_OBJECT_SHOW || event.event == EVENT_OBJECT_HIDE ||
           event.event == EVENT_OBJECT_CLOAKED || event.event == EVENT_OBJECT_UNCLOAKED ||
           event.event == EVENT_OBJECT_DESTROY;
}

} // namespace

EventRecorder::EventRecorder()
    : hook(SetWinEventHook(EVENT_OBJECT_DESTROY, EVENT_OBJECT_UNCLOAKED, nullptr, record, 0, 0,
                           WINEVENT_OUTOFCONTEXT)) {
    EXPECT_NE(hook, nullptr) << "error " << GetLastError();
    makeMessageQueue();
}

bool EventRecorder::receiveAll(const WindowThread& thread, HWND window) const {
    static LONG fence = firstFence;
    const LONG expected = ++fence;
    thread.run([=] { announce(fenceEvent, window, expected); });
    return pumpUntil([&] {
        return std::any_of(all.begin(), all.end(), [&](const RecordedEvent& event) {
            return event.hook == hook && isFence(event) && event.child == expected;
        });
    });
}

std::vector<RecordedEvent> EventRecorder::about(HWND window) const {
    std::vector<RecordedEvent> events;
    std::copy_if(all.begin(), all.end(), std::back_inserter(events), [&](const auto& event) {
        return event.hook == hook && event.window == window && !isFence(event);
    });
    return events;
}

std::string EventRecorder::answerAbout(HWND window) const {
    std::vector<std::string> names;
    for (const RecordedEvent& event : about(window)) {
        if (changesWindow(event)) {
            names.push_back(nameOf(event));
        }
    }
    return joined(names, "no event");
}

std::string EventRecorder::detailAbout(HWND window) const {
    std::vector<std::string> names;
    for (const RecordedEvent& event : about(window)) {
        names.push_back(nameOf(event));
    }
    return joined(names, "no event");
}

void CALLBACK EventRecorder::record(HWINEVENTHOOK hook, DWORD event, HWND window, LONG object,
                                    LONG child, DWORD thread, DWORD) {
    all.push_back({hook, event, window, object, child, thread, GetCurrentThreadId()});
}

void announce(DWORD event, HWND window, LONG child) {
    NotifyWinEvent(event, window, OBJID_WINDOW, child);
}

} // namespace tests
