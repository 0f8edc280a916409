#pragma once

#include "snapshot/reading.h"

#include <map>
#include <string>

namespace snapshot {

// Replaces what identifies a person, a document or a device by placeholders such as "title 3": the
// same text by the same placeholder as long as the object lives. Empty texts stay empty.
//
// Titles, serial numbers, the instance part of device paths and of WMI's instance names, and the
// user's name wherever it occurs, also in a word and in another case. The title of a window whose
// reason is "blocked" stays, because the library recognises these windows of the system by it.
class Redaction {
public:
    // Replaces the texts of a reading, and sets its flag.
    void redact(Reading& reading);

    // The placeholder of a text of the desktop that was redacted last, read in another way.
    std::wstring title(const std::wstring& text);
    std::wstring serialNumber(const std::wstring& text);

    // Another text of that desktop, with a placeholder for the user's name.
    std::wstring withoutUser(const std::wstring& text);

private:
    void replaceTitle(Window& window);
    void replaceInstance(std::wstring& text, wchar_t separator, wchar_t terminator);
    std::wstring placeholder(const std::wstring& kind, const std::wstring& text);

    std::wstring userName; // of the desktop that was redacted last
    std::map<std::wstring, std::map<std::wstring, std::wstring>> placeholders; // by kind and text
};

} // namespace snapshot
