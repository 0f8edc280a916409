#include "tests/sweeps/failures.h"

#include "tests/fixtures/mangled_names.h"

#include <windows.h>

#include <comdef.h>
#include <wbemidl.h>

#include <cerrno>
#include <iomanip>
#include <new>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace tests {

namespace {

// The call returns the value, which the operation takes or throws.
FailureMode returning(std::int64_t value, const std::string& outcome = "returned") {
    std::ostringstream name;
    name << "returns " << value;
    return {name.str(),
            [=](Journal& journal, const std::string& call, std::size_t n) {
                journal.fail(call, n, value);
            },
            outcome};
}

template <typename Exception>
FailureMode throwing(const std::string& name, const Exception& exception) {
    return {"throws " + name,
            [=](Journal& journal, const std::string& call, std::size_t n) {
                journal.at(call, n, [=] { throw exception; });
            },
            name};
}

FailingCall platform(const std::string& name, const std::vector<FailureMode>& modes) {
    return {name, name, modes};
}

FailingCall method(const std::string& name) {
    return {name, "", {returning(E_FAIL), returning(WBEM_E_OUT_OF_MEMORY), returning(S_OK)}};
}

FailingCall ofRuntime(const std::string& name, const std::string& import) {
    return {name,
            import,
            {throwing("std::runtime_error", std::runtime_error("refused by the runtime")),
             throwing("std::bad_alloc", std::bad_alloc())}};
}

std::vector<FailingCall> displayCalls() {
    return {platform("EnumDisplayMonitors", {returning(FALSE)}),
            platform("GetMonitorInfoW", {returning(FALSE)}),
            platform("EnumDisplaySettingsW", {returning(FALSE)}),
            platform("GetDisplayConfigBufferSizes",
                     {returning(ERROR_NOT_SUPPORTED), returning(ERROR_ACCESS_DENIED)}),
            platform("QueryDisplayConfig",
                     {returning(ERROR_INSUFFICIENT_BUFFER), returning(ERROR_GEN_FAILURE)}),
            platform("DisplayConfigGetDeviceInfo",
                     {returning(ERROR_INVALID_PARAMETER), returning(ERROR_GEN_FAILURE)})};
}

std::vector<FailingCall> windowCalls() {
    return {
        platform("EnumWindows", {returning(FALSE)}),
        platform("GetWindowTextLengthW", {returning(0)}),
        platform("GetWindowTextW", {returning(0)}),
        platform("GetClassNameW", {returning(0)}),
        platform("GetWindowLongW", {returning(0)}),
        platform("GetAncestor", {returning(0)}),
        platform("IsWindow", {returning(FALSE)}),
        platform("IsWindowVisible", {returning(FALSE)}),
        platform("GetShellWindow", {returning(0)}),
        platform("DwmGetWindowAttribute", {returning(E_NOTIMPL), returning(E_INVALIDARG)}),
        platform("SetWinEventHook", {returning(0)}),
        platform("UnhookWinEvent", {returning(FALSE)}),
        platform("SendMessageW", {returning(CB_ERR, "_com_error 0xffffffff"),
                                  returning(CB_ERRSPACE, "_com_error 0xfffffffe"), returning(0)})};
}

// The methods and functions of COM also "succeed" without giving what was asked for.
std::vector<FailingCall> identificationCalls() {
    return {
        platform("CoInitializeEx", {returning(E_OUTOFMEMORY), returning(RPC_E_CHANGED_MODE)}),
        platform("CoInitializeSecurity", {returning(E_ACCESSDENIED), returning(RPC_E_TOO_LATE)}),
        platform("CoCreateInstance",
                 {returning(REGDB_E_CLASSNOTREG), returning(E_OUTOFMEMORY), returning(S_OK)}),
        platform("CoSetProxyBlanket", {returning(E_NOINTERFACE)}),
        method("IWbemLocator::ConnectServer"),
        method("IWbemServices::ExecQuery"),
        method("IEnumWbemClassObject::Next"),
        method("IWbemClassObject::Get(InstanceName)"),
        method("IWbemClassObject::Get(SerialNumberID)"),
        platform("SysAllocString", {returning(0, "_com_error 0x8007000e")}),
        platform("SafeArrayGetVartype", {returning(E_INVALIDARG)}),
        platform("SafeArrayGetLBound", {returning(DISP_E_BADINDEX)}),
        platform("SafeArrayGetUBound", {returning(DISP_E_BADINDEX)}),
        platform("SafeArrayAccessData", {returning(E_UNEXPECTED)})};
}

std::vector<FailingCall> threadCalls() {
    return {platform("_beginthreadex", {returning(EAGAIN, "std::system_error"),
                                        returning(EACCES, "std::system_error")}),
            platform("WaitForSingleObject", {returning(ERROR_INVALID_HANDLE, "std::system_error")}),
            platform("CloseHandle", {returning(FALSE)}),
            platform("GetModuleHandleExW", {returning(ERROR_MOD_NOT_FOUND, "std::system_error")}),
            platform("TlsSetValue", {returning(FALSE, "std::system_error")})};
}

std::vector<FailingCall> runtimeCalls() {
    return {ofRuntime("VorlenCore::Instance", mangled::instance),
            ofRuntime("VorlenCore::ClearMonitorList", mangled::clearMonitorList),
            ofRuntime("VorlenCore::AddMonitorItem", mangled::addMonitorItem),
            ofRuntime("VorlenCore::GetMonitorName", mangled::getMonitorName),
            ofRuntime("VorlenCore::GetMonitorModelName", mangled::getMonitorModelName),
            ofRuntime("VorlenCore::SetMonitorModelName", mangled::setMonitorModelName),
            ofRuntime("VorlenCore::GetVorlenModelName", mangled::getVorlenModelName),
            ofRuntime("VorlenCore::SetVorlenModelName", mangled::setVorlenModelName),
            ofRuntime("VorlenCore::GetDefaultCameraNameByModelName", mangled::getDefaultCameraName),
            ofRuntime("vllogger::log", mangled::log)};
}

} // namespace

std::vector<FailingCall> failingCalls() {
    std::vector<FailingCall> calls;
    for (const auto& part :
         {displayCalls(), windowCalls(), identificationCalls(), threadCalls(), runtimeCalls()}) {
        calls.insert(calls.end(), part.begin(), part.end());
    }
    return calls;
}

std::string outcomeOf(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const std::bad_alloc&) {
        return "std::bad_alloc";
    } catch (const std::system_error&) {
        return "std::system_error";
    } catch (const std::runtime_error&) {
        return "std::runtime_error";
    } catch (const _com_error& error) {
        std::ostringstream text;
        text << "_com_error 0x" << std::hex << std::setw(8) << std::setfill('0')
             << static_cast<unsigned long>(error.Error());
        return text.str();
    } catch (...) {
        return "another exception";
    }
    return "returned";
}

} // namespace tests
