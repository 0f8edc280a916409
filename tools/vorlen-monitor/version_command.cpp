#include "tools/vorlen-monitor/version_command.h"

#include "platform/safe_text.h"
#include "snapshot/reading.h"
#include "tools/vorlen-monitor/libraries.h"

#include <windows.h>

#include <vector>

namespace vorlen::tool {

namespace {

const std::string unknown = "unknown";

// From the fixed part of the file's version resource.
std::string versionOf(const std::wstring& file) {
    std::vector<std::byte> resource(GetFileVersionInfoSizeW(file.c_str(), nullptr));
    VS_FIXEDFILEINFO* info = nullptr;
    UINT size = 0;
    if (resource.empty() ||
        GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(resource.size()),
                            resource.data()) == FALSE ||
        VerQueryValueW(resource.data(), L"\\", reinterpret_cast<void**>(&info), &size) == FALSE ||
        size < sizeof(*info)) {
        return unknown;
    }
    return std::to_string(HIWORD(info->dwFileVersionMS)) + "." +
           std::to_string(LOWORD(info->dwFileVersionMS)) + "." +
           std::to_string(HIWORD(info->dwFileVersionLS));
}

std::string linesOfLibraries(const std::string& module, const std::string& runtime) {
    return "\nlibvorlen_monitor.dll " + module + "\nvorlen_runtime.dll " + runtime + "\n";
}

} // namespace

Versions readVersions() {
    // The runtime first: the module finds it among the loaded libraries.
    const Library runtime = libraryBesideThisProgram(L"vorlen_runtime.dll");
    const Library module = libraryBesideThisProgram(L"libvorlen_monitor.dll");
    return {VORLEN_VERSION, versionOf(module.file()), versionOf(runtime.file())};
}

std::string versionText(const Versions& versions) {
    return "vorlen-monitor " + versions.command +
           linesOfLibraries(versions.module, versions.runtime);
}

std::string versionText(const snapshot::Reading& reading) {
    const auto known = [](const std::string& version) {
        return version.empty() ? unknown : spellControls(version);
    };
    return spellControls(reading.origin) + linesOfLibraries(known(reading.process.moduleVersion),
                                                            known(reading.process.runtimeVersion));
}

std::string versionWarning(const Versions& versions) {
    if (versions.module == versions.command && versions.runtime == versions.command) {
        return {};
    }
    return "warning: the versions of program and libraries differ; use the files of one release";
}

} // namespace vorlen::tool
