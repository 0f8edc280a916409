#pragma once

#include <windows.h>

#include <string_view>

namespace vorlen::tool {

// Standard output. Files, pipes and devices get plain UTF-8 bytes; a console gets UTF-16, which it
// shows whatever its code page is. Nothing is held back: what write() returned from is written.
class Output {
public:
    Output();

    // Throws a Failure when the text cannot be written to its end.
    void write(std::string_view text) const;

private:
    HANDLE handle;
};

// Writes "vorlen-monitor: MESSAGE" to standard error, as one line whatever the message holds.
void complain(std::string_view message);

} // namespace vorlen::tool
