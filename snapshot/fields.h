#pragma once

#include "snapshot/reading.h"

#include <tuple>
#include <type_traits>

// The fields of each record of a reading, with their names in a recording. Everything that handles
// all fields (writing, reading, redaction) goes through these tables.

namespace snapshot {

// How a recording shows a number: as a number, or as a text such as "0x10001".
enum class Notation { decimal, hexadecimal };

template <typename Record, typename Value>
struct Field {
    const char* name;
    Value Record::*member;
    Notation notation;
};

template <typename Record, typename Value>
constexpr Field<Record, Value> field(const char* name, Value Record::*member) {
    return {name, member, Notation::decimal};
}

// A handle, an HRESULT or a set of bits.
template <typename Record, typename Value>
constexpr Field<Record, Value> hexField(const char* name, Value Record::*member) {
    return {name, member, Notation::hexadecimal};
}

// The table of a record, in the order of a recording. Empty for a type that is no record.
template <typename Record>
inline constexpr auto fields = std::tuple();

template <>
inline constexpr auto fields<Rectangle> = std::tuple(field("left", &Rectangle::left),
                                                     field("top", &Rectangle::top),
                                                     field("right", &Rectangle::right),
                                                     field("bottom", &Rectangle::bottom));

template <>
inline constexpr auto fields<DisplayMode> = std::tuple(
    field("width", &DisplayMode::width), field("height", &DisplayMode::height),
    field("frequency", &DisplayMode::frequency), field("bitsPerPixel", &DisplayMode::bitsPerPixel),
    field("orientation", &DisplayMode::orientation),
    field("fixedOutput", &DisplayMode::fixedOutput), field("interlaced", &DisplayMode::interlaced));

template <>
inline constexpr auto fields<CurrentMode> = std::tuple(field("x", &CurrentMode::x),
                                                       field("y", &CurrentMode::y),
                                                       field("mode", &CurrentMode::mode));

template <>
inline constexpr auto fields<Monitor> = std::tuple(
    hexField("handle", &Monitor::handle), field("informationRead", &Monitor::informationRead),
    field("deviceName", &Monitor::deviceName), field("rectangle", &Monitor::rectangle),
    field("workArea", &Monitor::workArea), field("primary", &Monitor::primary),
    field("currentMode", &Monitor::currentMode), field("offeredModes", &Monitor::offeredModes));

template <>
inline constexpr auto fields<AdapterId> = std::tuple(field("lowPart", &AdapterId::lowPart),
                                                     field("highPart", &AdapterId::highPart));

template <>
inline constexpr auto fields<SourceName> = std::tuple(field("status", &SourceName::status),
                                                      field("gdiDeviceName",
                                                            &SourceName::gdiDeviceName));

template <>
inline constexpr auto fields<TargetName> = std::tuple(
    field("status", &TargetName::status), hexField("flags", &TargetName::flags),
    hexField("edidManufactureId", &TargetName::edidManufactureId),
    hexField("edidProductCodeId", &TargetName::edidProductCodeId),
    field("connectorInstance", &TargetName::connectorInstance),
    field("friendlyName", &TargetName::friendlyName), field("devicePath", &TargetName::devicePath));

template <>
inline constexpr auto fields<PreferredMode> = std::tuple(field("status", &PreferredMode::status),
                                                         field("width", &PreferredMode::width),
                                                         field("height", &PreferredMode::height));

template <>
inline constexpr auto
    fields<AdvancedColor> = std::tuple(field("status", &AdvancedColor::status),
                                       hexField("flags", &AdvancedColor::flags),
                                       field("encoding", &AdvancedColor::encoding),
                                       field("bitsPerChannel", &AdvancedColor::bitsPerChannel));

template <>
inline constexpr auto fields<Rational> = std::tuple(field("numerator", &Rational::numerator),
                                                    field("denominator", &Rational::denominator));

template <>
inline constexpr auto fields<DisplayPath> = std::tuple(
    hexField("flags", &DisplayPath::flags), field("sourceAdapter", &DisplayPath::sourceAdapter),
    field("sourceId", &DisplayPath::sourceId),
    field("sourceModeIndex", &DisplayPath::sourceModeIndex),
    hexField("sourceStatusFlags", &DisplayPath::sourceStatusFlags),
    field("targetAdapter", &DisplayPath::targetAdapter), field("targetId", &DisplayPath::targetId),
    field("targetModeIndex", &DisplayPath::targetModeIndex),
    hexField("targetStatusFlags", &DisplayPath::targetStatusFlags),
    field("targetAvailable", &DisplayPath::targetAvailable),
    field("outputTechnology", &DisplayPath::outputTechnology),
    field("rotation", &DisplayPath::rotation), field("scaling", &DisplayPath::scaling),
    field("refreshRate", &DisplayPath::refreshRate),
    field("scanLineOrdering", &DisplayPath::scanLineOrdering),
    field("sourceName", &DisplayPath::sourceName), field("targetName", &DisplayPath::targetName),
    field("preferredMode", &DisplayPath::preferredMode),
    field("advancedColor", &DisplayPath::advancedColor));

template <>
inline constexpr auto fields<PathMode> = std::tuple(
    field("infoType", &PathMode::infoType), field("adapter", &PathMode::adapter),
    field("id", &PathMode::id), field("width", &PathMode::width),
    field("height", &PathMode::height), field("pixelFormat", &PathMode::pixelFormat),
    field("x", &PathMode::x), field("y", &PathMode::y), field("pixelRate", &PathMode::pixelRate),
    field("horizontalFrequency", &PathMode::horizontalFrequency),
    field("verticalFrequency", &PathMode::verticalFrequency),
    field("activeWidth", &PathMode::activeWidth), field("activeHeight", &PathMode::activeHeight),
    field("totalWidth", &PathMode::totalWidth), field("totalHeight", &PathMode::totalHeight),
    field("videoStandard", &PathMode::videoStandard),
    field("scanLineOrdering", &PathMode::scanLineOrdering));

template <>
inline constexpr auto fields<DisplayConfiguration> = std::tuple(
    field("sizesStatus", &DisplayConfiguration::sizesStatus),
    field("announcedPaths", &DisplayConfiguration::announcedPaths),
    field("announcedModes", &DisplayConfiguration::announcedModes),
    field("queryStatus", &DisplayConfiguration::queryStatus),
    field("paths", &DisplayConfiguration::paths), field("modes", &DisplayConfiguration::modes));

template <>
inline constexpr auto fields<WmiStep> = std::tuple(field("name", &WmiStep::name),
                                                   hexField("result", &WmiStep::result));

template <>
inline constexpr auto fields<WmiProperty> = std::tuple(field("name", &WmiProperty::name),
                                                       hexField("result", &WmiProperty::result),
                                                       field("type", &WmiProperty::type),
                                                       field("text", &WmiProperty::text));

template <>
inline constexpr auto fields<WmiObject> = std::tuple(field("properties", &WmiObject::properties));

template <>
inline constexpr auto fields<Wmi> = std::tuple(field("steps", &Wmi::steps),
                                               field("objects", &Wmi::objects));

template <>
inline constexpr auto fields<Window> = std::tuple(
    hexField("handle", &Window::handle), field("titleLength", &Window::titleLength),
    field("title", &Window::title), field("className", &Window::className),
    field("visible", &Window::visible), hexField("style", &Window::style),
    hexField("extendedStyle", &Window::extendedStyle), hexField("root", &Window::root),
    field("exists", &Window::exists), hexField("cloakingResult", &Window::cloakingResult),
    field("cloaked", &Window::cloaked), field("reason", &Window::reason));

template <>
inline constexpr auto fields<Process> = std::tuple(
    field("dpiAwareness", &Process::dpiAwareness), field("remoteSession", &Process::remoteSession),
    field("userName", &Process::userName), field("windowsVersion", &Process::windowsVersion),
    field("wineVersion", &Process::wineVersion), field("moduleVersion", &Process::moduleVersion),
    field("runtimeVersion", &Process::runtimeVersion), field("kitModels", &Process::kitModels));

template <>
inline constexpr auto fields<Reading> = std::tuple(
    field("origin", &Reading::origin), field("redacted", &Reading::redacted),
    field("process", &Reading::process), field("monitors", &Reading::monitors),
    field("displayConfiguration", &Reading::displayConfiguration), field("wmi", &Reading::wmi),
    hexField("shellWindow", &Reading::shellWindow), field("windows", &Reading::windows));

template <typename Type>
inline constexpr bool isRecord =
    !std::is_same_v<std::remove_const_t<decltype(fields<Type>)>, std::tuple<>>;

// Calls visit(field) for each field of a record, in the order of its table.
template <typename Record, typename Visit>
constexpr void forEachField(Visit visit) {
    std::apply([&](const auto&... each) { (visit(each), ...); }, fields<Record>);
}

} // namespace snapshot
