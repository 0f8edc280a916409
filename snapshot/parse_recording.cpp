#include "platform/safe_text.h"
#include "snapshot/fields.h"
#include "snapshot/recording.h"
#include "snapshot/recording_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <system_error>
#include <type_traits>
#include <utility>

namespace snapshot {

namespace {

using recording::Json;

// More than any desktop has: a longer list is a mistake.
constexpr std::size_t mostEntries = 100'000;
// Of monitors and of paths, which a replay compares with each other.
constexpr std::size_t mostOutputs = 1'000;

constexpr std::size_t longestName = 80; // of a field in a message, in bytes

// The steps of readWmi().
constexpr std::array<std::string_view, 7> wmiSteps{"CoInitializeEx",
                                                   "CoInitializeSecurity",
                                                   "CoCreateInstance",
                                                   "IWbemLocator::ConnectServer",
                                                   "CoSetProxyBlanket",
                                                   "IWbemServices::ExecQuery",
                                                   "IEnumWbemClassObject::Next"};

// The path names a field, such as "monitors[0].deviceName".
[[noreturn]] void refuse(const std::string& path, const std::string& problem) {
    throw RecordingError(path + " " + problem);
}

std::string shortened(const std::string& name) {
    return name.size() > longestName ? name.substr(0, longestName) + "..." : name;
}

std::string entryOf(const std::string& list, std::size_t index) {
    return list + "[" + std::to_string(index) + "]";
}

void expectAtMost(std::size_t most, std::size_t size, const std::string& list) {
    if (size > most) {
        refuse(list, "has " + std::to_string(size) + " entries, more than " + std::to_string(most));
    }
}

std::string fieldOf(const std::string& record, const std::string& name) {
    return record.empty() ? name : record + "." + name;
}

// Reads the value at a path into a variable that has its default value. One function for each type
// of value; a class, so that each sees the others.
class Values {
public:
    template <typename Record>
    static void read(const Json& json, const std::string& path, Record& record) {
        if (!json.is_object()) {
            refuse(path, "is not an object");
        }
        refuseUnknownFields<Record>(json, path);
        forEachField<Record>([&](const auto& field) {
            if (const auto found = json.find(field.name); found != json.end()) {
                const std::string fieldPath = fieldOf(path, field.name);
                auto& value = record.*field.member;
                if constexpr (std::is_integral_v<std::remove_reference_t<decltype(value)>>) {
                    readInteger(*found, fieldPath, field.notation, value);
                } else {
                    read(*found, fieldPath, value);
                }
            }
        });
    }

private:
    template <typename Record>
    static void refuseUnknownFields(const Json& json, const std::string& path) {
        for (const auto& item : json.items()) {
            bool known = false;
            forEachField<Record>(
                [&](const auto& field) { known = known || field.name == item.key(); });
            if (!known) {
                refuse(fieldOf(path, shortened(item.key())), "is not a field of a recording");
            }
        }
    }

    template <typename Element>
    static void read(const Json& json, const std::string& path, std::vector<Element>& elements) {
        if (!json.is_array()) {
            refuse(path, "is not a list");
        }
        expectAtMost(mostEntries, json.size(), path);
        elements.reserve(json.size());
        for (const Json& element : json) {
            const std::string elementPath = entryOf(path, elements.size());
            read(element, elementPath, elements.emplace_back());
        }
    }

    template <typename Value>
    static void read(const Json& json, const std::string& path, std::optional<Value>& optional) {
        if (!json.is_null()) {
            read(json, path, optional.emplace());
        }
    }

    static void read(const Json& json, const std::string& path, std::string& text) {
        if (!json.is_string()) {
            refuse(path, "is not a text");
        }
        text = json.get<std::string>();
    }

    static void read(const Json& json, const std::string& path, std::wstring& text) {
        if (json.is_string()) {
            // Without loss: the parser accepts only valid UTF-8.
            text = vorlen::toUtf16Lossy(json.get_ref<const std::string&>());
            return;
        }
        if (!json.is_array()) {
            refuse(path, "is not a text or a list of UTF-16 units");
        }
        for (const Json& element : json) {
            std::uint16_t unit = 0;
            readDecimal(element, entryOf(path, text.size()), unit);
            text += static_cast<wchar_t>(unit);
        }
    }

    static void readInteger(const Json& json, const std::string& path, Notation, bool& value) {
        if (!json.is_boolean()) {
            refuse(path, "is not true or false");
        }
        value = json.get<bool>();
    }

    template <typename Integer>
    static void readInteger(const Json& json, const std::string& path, Notation notation,
                            Integer& number) {
        notation == Notation::hexadecimal ? readHexadecimal(json, path, number)
                                          : readDecimal(json, path, number);
    }

    template <typename Integer>
    static void readDecimal(const Json& json, const std::string& path, Integer& number) {
        using Limits = std::numeric_limits<Integer>;
        const bool inRange =
            json.is_number_unsigned()
                ? std::in_range<Integer>(json.get<std::uint64_t>())
                : json.is_number_integer() && std::in_range<Integer>(json.get<std::int64_t>());
        if (!inRange) {
            refuse(path, "is not a whole number from " + std::to_string(Limits::min()) + " to " +
                             std::to_string(Limits::max()));
        }
        number = json.get<Integer>();
    }

    template <typename Integer>
    static void readHexadecimal(const Json& json, const std::string& path, Integer& number) {
        constexpr std::string_view prefix = "0x";
        const std::string text = json.is_string() ? json.get<std::string>() : std::string();
        std::make_unsigned_t<Integer> bits = 0;
        if (text.starts_with(prefix)) {
            const char* const end = text.data() + text.size();
            const auto parsed = std::from_chars(text.data() + prefix.size(), end, bits, 16);
            if (parsed.ec == std::errc() && parsed.ptr == end) {
                number = static_cast<Integer>(bits);
                return;
            }
        }
        refuse(path, "is not a text with 1 to " + std::to_string(2 * sizeof number) +
                         " digits such as \"0x10001\"");
    }
};

std::string whyNotJson(std::string_view text, std::size_t byte) {
    if (byte > text.size()) {
        return "the text ends in the middle of a recording: the file was cut off";
    }
    const auto line = std::ranges::count(text.substr(0, byte), '\n') + 1;
    return "the text is not JSON: line " + std::to_string(line) + " has an error";
}

// For the parser, which would keep the last of two fields with one name.
class SingleFields {
public:
    bool operator()(int, Json::parse_event_t event, const Json& parsed) {
        if (event == Json::parse_event_t::object_start) {
            names.emplace_back();
        } else if (event == Json::parse_event_t::object_end) {
            names.pop_back();
        } else if (event == Json::parse_event_t::key) {
            const auto& name = parsed.get_ref<const std::string&>();
            if (!names.back().insert(name).second) {
                throw RecordingError("the field \"" + shortened(name) + "\" occurs twice");
            }
        }
        return true;
    }

private:
    std::vector<std::set<std::string>> names; // of the objects that the parser is in
};

Json parse(std::string_view text) {
    try {
        return Json::parse(text, SingleFields());
    } catch (const Json::parse_error& error) {
        throw RecordingError(whyNotJson(text, error.byte));
    } catch (const Json::out_of_range&) {
        throw RecordingError("the text is not JSON: it has a number that is too large");
    }
}

// The field of this name, or null. A reference: the copy of a deeply nested value would overflow
// the stack.
const Json& fieldIn(const Json& document, const char* name) {
    static const Json none;
    const auto found = document.find(name);
    return found != document.end() ? *found : none;
}

// Refuses what is not a recording of this version, and removes what is not a part of the reading.
void openEnvelope(Json& document) {
    if (fieldIn(document, "format") != recording::format) {
        throw RecordingError(std::string("the text is not a recording: it has no field \"format\" "
                                         "that says \"") +
                             recording::format + "\"");
    }
    const Json& version = fieldIn(document, "version");
    if (version.is_number_unsigned() &&
        std::cmp_greater(version.get<std::uint64_t>(), recording::version)) {
        throw RecordingError("made by a newer vorlen-monitor (recording version " + version.dump() +
                             "); this one reads version " + std::to_string(recording::version));
    }
    if (version != recording::version) {
        refuse("version", "is not " + std::to_string(recording::version));
    }
    if (!document.contains("origin")) {
        refuse("origin", "is missing: say how the recording was made");
    }
    document.erase("format");
    document.erase("version");
}

template <typename Record>
void expectOwnHandles(const std::vector<Record>& records, const std::string& list) {
    std::set<std::uint64_t> handles{0};
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (!handles.insert(records[i].handle).second) {
            refuse(fieldOf(entryOf(list, i), "handle"),
                   records[i].handle == 0 ? "is missing or zero" : "is that of an earlier entry");
        }
    }
}

template <typename Record>
void expectAnnounced(const std::vector<Record>& records, std::uint32_t announced, std::size_t most,
                     const std::string& list, const std::string& number) {
    if (announced > most) {
        refuse("displayConfiguration." + number, "is more than " + std::to_string(most));
    }
    if (records.size() > announced) {
        refuse("displayConfiguration." + list,
               "has more entries than displayConfiguration." + number + " says");
    }
}

void expectKnownSteps(const std::vector<WmiStep>& steps) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const bool isKnown = std::ranges::find(wmiSteps, steps[i].name) != wmiSteps.end();
        if (!isKnown || !names.insert(steps[i].name).second) {
            refuse(fieldOf(entryOf("wmi.steps", i), "name"),
                   isKnown ? "is that of an earlier step" : "is not a step of the query");
        }
    }
}

void expectSense(const Reading& reading) {
    expectAtMost(mostOutputs, reading.monitors.size(), "monitors");
    expectOwnHandles(reading.monitors, "monitors");
    expectOwnHandles(reading.windows, "windows");
    expectKnownSteps(reading.wmi.steps);
    const DisplayConfiguration& configuration = reading.displayConfiguration;
    expectAnnounced(configuration.paths, configuration.announcedPaths, mostOutputs, "paths",
                    "announcedPaths");
    expectAnnounced(configuration.modes, configuration.announcedModes, mostEntries, "modes",
                    "announcedModes");
}

} // namespace

Reading fromRecording(std::string_view text) {
    Json document = parse(text);
    openEnvelope(document);
    Reading reading;
    Values::read(document, "", reading);
    expectSense(reading);
    return reading;
}

} // namespace snapshot
