#include "snapshot/redaction.h"

#include "platform/safe_text.h"
#include "platform/text.h"
#include "snapshot/fields.h"

#include <windows.h>

#include <cstddef>
#include <string_view>
#include <type_traits>

namespace snapshot {

namespace {

// Calls visit(text) for each text of the system in a record and in the records in it. The name of a
// WMI property is not one of them: it belongs to the class.
template <typename Value, typename Visit>
void forEachText(Value& value, const Visit& visit) {
    if constexpr (std::is_same_v<Value, std::wstring>) {
        visit(value);
    } else if constexpr (std::is_same_v<Value, WmiProperty>) {
        visit(value.text);
    } else if constexpr (isRecord<Value>) {
        forEachField<Value>([&](const auto& field) { forEachText(value.*field.member, visit); });
    } else if constexpr (requires { value.has_value(); }) {
        if (value) {
            forEachText(*value, visit);
        }
    } else if constexpr (requires { value.emplace_back(); }) {
        for (auto& element : value) {
            forEachText(element, visit);
        }
    }
}

// Names of users have no case.
std::size_t findInAnyCase(std::wstring_view text, const std::wstring& name) {
    const int found =
        FindStringOrdinal(FIND_FROMSTART, text.data(), vorlen::checkedLength(text.size()),
                          name.data(), vorlen::checkedLength(name.size()), TRUE);
    return found >= 0 ? static_cast<std::size_t>(found) : std::wstring_view::npos;
}

std::wstring replaceAll(std::wstring_view text, const std::wstring& name,
                        const std::wstring& replacement) {
    std::wstring result;
    for (std::size_t found = findInAnyCase(text, name); found != std::wstring_view::npos;
         found = findInAnyCase(text, name)) {
        result.append(text.substr(0, found)).append(replacement);
        text.remove_prefix(found + name.size());
    }
    return result.append(text);
}

struct Part {
    std::size_t begin;
    std::size_t length;
};

// The instance part of a device path such as "\\?\DISPLAY#MODEL#INSTANCE#{CLASS}", or of a WMI
// instance name such as "DISPLAY\MODEL\INSTANCE_0": between the second separator and the last
// terminator. All of a text that has another form.
Part instanceOf(const std::wstring& text, wchar_t separator, wchar_t terminator) {
    const std::size_t first = text.find(separator);
    const std::size_t second =
        first != std::wstring::npos ? text.find(separator, first + 1) : std::wstring::npos;
    const std::size_t end = text.rfind(terminator);
    if (second == std::wstring::npos || end == std::wstring::npos || end <= second) {
        return {0, text.size()};
    }
    return {second + 1, end - second - 1};
}

} // namespace

void Redaction::redact(Reading& reading) {
    userName = reading.process.userName;
    forEachText(reading, [this](std::wstring& text) { text = withoutUser(text); });
    reading.origin = vorlen::toUtf8Lossy(withoutUser(vorlen::toUtf16Lossy(reading.origin)));
    for (DisplayPath& path : reading.displayConfiguration.paths) {
        replaceInstance(path.targetName.devicePath, L'#', L'#');
    }
    for (WmiObject& object : reading.wmi.objects) {
        for (WmiProperty& property : object.properties) {
            if (property.name == L"InstanceName") {
                replaceInstance(property.text, L'\\', L'_');
            } else if (property.name == L"SerialNumberID") {
                property.text = placeholder(L"serial number", property.text);
            }
        }
    }
    for (Window& window : reading.windows) {
        replaceTitle(window);
    }
    reading.redacted = true;
}

std::wstring Redaction::title(const std::wstring& text) {
    return placeholder(L"title", withoutUser(text));
}

std::wstring Redaction::serialNumber(const std::wstring& text) {
    return placeholder(L"serial number", withoutUser(text));
}

std::wstring Redaction::withoutUser(const std::wstring& text) {
    return userName.empty() ? text : replaceAll(text, userName, placeholder(L"user", userName));
}

void Redaction::replaceTitle(Window& window) {
    if (window.reason != "blocked" && !window.title.empty()) {
        window.title = placeholder(L"title", window.title);
        window.titleLength = vorlen::checkedLength(window.title.size());
    }
}

void Redaction::replaceInstance(std::wstring& text, wchar_t separator, wchar_t terminator) {
    const Part part = instanceOf(text, separator, terminator);
    if (part.length != 0) {
        // In parentheses, so that no instance is the start of another: the library compares starts.
        const std::wstring instance = text.substr(part.begin, part.length);
        text.replace(part.begin, part.length, L"(" + placeholder(L"instance", instance) + L")");
    }
}

std::wstring Redaction::placeholder(const std::wstring& kind, const std::wstring& text) {
    if (text.empty()) {
        return {};
    }
    auto& ofKind = placeholders[kind];
    const auto [entry, isNew] = ofKind.try_emplace(text);
    if (isNew) {
        entry->second = kind + L" " + std::to_wstring(ofKind.size());
    }
    return entry->second;
}

} // namespace snapshot
