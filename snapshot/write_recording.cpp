#include "platform/safe_text.h"
#include "platform/text.h"
#include "snapshot/fields.h"
#include "snapshot/recording.h"
#include "snapshot/recording_format.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <type_traits>

namespace snapshot {

namespace {

using recording::Json;

template <typename Value>
constexpr bool isSimple(const Value&) {
    return !isRecord<Value>;
}
template <typename Value>
constexpr bool isSimple(const std::optional<Value>&) {
    return !isRecord<Value>;
}
template <typename Value>
constexpr bool isSimple(const std::vector<Value>&) {
    return false;
}

// Whether the record is written on one line: it has neither records nor lists in it.
template <typename Record>
bool isOneLine(const Record& record) {
    bool simple = true;
    forEachField<Record>(
        [&](const auto& field) { simple = simple && isSimple(record.*field.member); });
    return simple;
}

class Writer {
public:
    std::string document(const Reading& reading) {
        enclose("{}", false, [&](const auto& beginItem) {
            beginItem();
            name("format");
            value(std::string(recording::format));
            beginItem();
            name("version");
            value(recording::version);
            fieldsOf(reading, beginItem);
        });
        return text + '\n';
    }

private:
    std::string text;
    std::string newLine = "\n"; // with the current indentation

    // Writes the brackets of an object or a list. Calls writeItems(beginItem), which calls
    // beginItem() before each item.
    template <typename WriteItems>
    void enclose(std::string_view brackets, bool onOneLine, WriteItems writeItems) {
        constexpr std::string_view indentation = "  ";
        bool isFirst = true;
        text += brackets.front();
        newLine += indentation;
        writeItems([&] {
            text += isFirst ? "" : ",";
            text += !onOneLine ? newLine : isFirst ? "" : " ";
            isFirst = false;
        });
        newLine.resize(newLine.size() - indentation.size());
        text += onOneLine || isFirst ? "" : newLine;
        text += brackets.back();
    }

    void name(const char* name) { text += Json(name).dump() + ": "; }

    template <typename Record, typename BeginItem>
    void fieldsOf(const Record& record, const BeginItem& beginItem) {
        forEachField<Record>([&](const auto& field) {
            beginItem();
            name(field.name);
            value(record.*field.member, field.notation);
        });
    }

    template <typename Value>
    void value(const Value& value, Notation notation = Notation::decimal) {
        if constexpr (isRecord<Value>) {
            enclose("{}", isOneLine(value),
                    [&](const auto& beginItem) { fieldsOf(value, beginItem); });
        } else if constexpr (std::is_same_v<Value, bool>) {
            text += value ? "true" : "false";
        } else {
            text += notation == Notation::hexadecimal ? hexadecimal(value) : std::to_string(value);
        }
    }

    template <typename Element>
    void value(const std::vector<Element>& elements, Notation) {
        enclose("[]", false, [&](const auto& beginItem) {
            for (const Element& element : elements) {
                beginItem();
                value(element);
            }
        });
    }

    template <typename Value>
    void value(const std::optional<Value>& optional, Notation notation) {
        if (optional) {
            value(*optional, notation);
        } else {
            text += "null";
        }
    }

    void value(const std::string& string, Notation = Notation::decimal) {
        text += Json(string).dump();
    }

    // A text that is not valid UTF-16 is written as a list of its units.
    void value(const std::wstring& units, Notation) {
        try {
            text += Json(vorlen::toUtf8Strict(units)).dump();
        } catch (const std::range_error&) {
            enclose("[]", true, [&](const auto& beginItem) {
                for (const wchar_t unit : units) {
                    beginItem();
                    text += std::to_string(unit);
                }
            });
        }
    }

    template <typename Number>
    static std::string hexadecimal(Number number) {
        std::array<char, 2 * sizeof number> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                       std::make_unsigned_t<Number>(number), 16);
        return "\"0x" + std::string(digits.data(), end.ptr) + '"';
    }
};

} // namespace

std::string toRecording(const Reading& reading) {
    // So that a recording can be shown on a terminal.
    return vorlen::spellControlsInJson(Writer().document(reading));
}

} // namespace snapshot
