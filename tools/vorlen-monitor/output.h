#pragma once

#include <windows.h>

#include <string_view>

namespace vorlen::tool {

// Standard output. Files, pipes and devices receive UTF-8; a console receives UTF-16, which does
// not depend on its code page. Nothing is buffered.
class Output {
public:
    Output();

    // Throws a Failure when not all of the text can be written.
    void write(std::string_view text) const;

private:
    HANDLE handle;
};

// Writes "PROGRAM: MESSAGE" to standard error as one line; control characters of the message are
// replaced.
void complain(std::string_view message, std::string_view program = "vorlen-monitor");

} // namespace vorlen::tool
