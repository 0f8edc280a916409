#include "runtime/callback_caller.h"

#include "runtime/diagnostics.h"
#include "runtime/text.h"

#include <exception>

namespace vorlen::log {

void CallbackCaller::call(DebugCallback callback, level_enum level, const std::string& message) {
    if (callback == nullptr || calling.Get() != nullptr) {
        return;
    }
    calling.Set(this);
    try {
        callback(static_cast<int>(level), message.c_str());
        calling.Clear();
    } catch (const std::exception& error) {
        calling.Clear();
        complainOnce(error.what());
    } catch (...) {
        calling.Clear();
        complainOnce("it is no std::exception");
    }
}

void CallbackCaller::complainOnce(const std::string& what) {
    if (!hasComplained.test_and_set()) {
        complain("the debug callback threw an exception, which is dropped (" + spellControls(what) +
                 "): let the callback catch what it throws");
    }
}

} // namespace vorlen::log
