#pragma once

#include "snapshot/reading.h"

#include <map>
#include <string>
#include <vector>

namespace snapshot {

// Replaces what identifies a person, a document or a device by placeholders such as "title 3": the
// same text by the same placeholder as long as the object lives. Empty texts stay empty.
//
// Titles, serial numbers, the instance part of device paths and of WMI's instance names, and the
// user's name wherever it occurs. The title of a window whose reason is "blocked" stays, because
// the library recognises these windows of the system by it.
class Redaction {
public:
    // Replaces the texts of a reading, and sets its flag.
    void redact(Reading& reading);

    // The placeholder of a text of the same desktop that was read in another way.
    std::wstring title(const std::wstring& text);
    std::wstring serialNumber(const std::wstring& text);

private:
    std::wstring placeholder(const std::wstring& kind, const std::wstring& text);

    std::map<std::wstring, std::map<std::wstring, std::wstring>> placeholders; // by kind and text
};

} // namespace snapshot
