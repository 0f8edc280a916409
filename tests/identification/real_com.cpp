#include "tests/identification/real_com.h"

#include "simulation/simulated_desktop.h"
#include "tests/support/simulation.h"

#include <stdexcept>

namespace tests {

namespace {

void* systemFunction(const std::string& name) {
    for (const wchar_t* library : {L"ole32.dll", L"oleaut32.dll"}) {
        if (const FARPROC function = GetProcAddress(GetModuleHandleW(library), name.c_str())) {
            return reinterpret_cast<void*>(function);
        }
    }
    throw std::runtime_error("the system has no function " + name);
}

} // namespace

RealCom::RealCom(HMODULE image) {
    for (const std::string& name : SimulatedDesktop::wmiFunctions) {
        void* const function =
            name == "CoCreateInstance" ? addressOf(createInstance) : systemFunction(name);
        redirects.emplace_back(image, name, function);
    }
}

HRESULT WINAPI RealCom::createInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid,
                                       void** object) {
    ++get().locators;
    return CoCreateInstance(classId, outer, context, iid, object);
}

} // namespace tests
