#include "runtime/callback_caller.h"

#include "platform/safe_text.h"
#include "runtime/complain.h"

#include <exception>

namespace vorlen::log {

void CallbackCaller::call(DebugCallback callback, level_enum level, const std::string& message) {
    if (callback == nullptr || Calling::Get() != nullptr) {
        return;
    }
    Calling::Set(this);
    try {
        callback(static_cast<int>(level), message.c_str());
        Calling::Clear();
    } catch (const std::exception& error) {
        Calling::Clear();
        complainOnce(error.what());
    } catch (...) {
        Calling::Clear();
        complainOnce("it is not a std::exception");
    }
}

void CallbackCaller::complainOnce(const std::string& what) {
    if (!hasComplained.test_and_set()) {
        complain("the debug callback threw an exception, which is dropped (" + spellControls(what) +
                 "): let the callback catch what it throws");
    }
}

} // namespace vorlen::log
