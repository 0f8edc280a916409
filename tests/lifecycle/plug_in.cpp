// A plug-in of a host, which calls a function while its static objects are destroyed. Images that
// were loaded after this one have handled the end of the process by then.

namespace {

struct CallAtEnd {
    CallAtEnd() = default;
    ~CallAtEnd() {
        if (function != nullptr) {
            function();
        }
    }
    CallAtEnd(const CallAtEnd&) = delete;
    CallAtEnd& operator=(const CallAtEnd&) = delete;

    void (*function)() = nullptr;
} callAtEnd;

} // namespace

extern "C" __declspec(dllexport) void callFromStaticDestructor(void (*function)()) {
    callAtEnd.function = function;
}
