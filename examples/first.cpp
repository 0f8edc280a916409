// A first host: names the monitors of the desktop, and says whether the kit's is set up as needed.
#include "vorlen/monitor.hpp"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>

int main() try {
    _setmode(_fileno(stdout), _O_U8TEXT); // any text on a console, UTF-8 in files and pipes
    const vorlen::Session session;        // this thread is the service thread
    for (const vorlen::Monitor& monitor : session.monitors()) {
        std::wprintf(L"%ls: %d x %d\n", monitor.friendlyName.c_str(), monitor.width,
                     monitor.height);
    }
    std::wprintf(L"status: %hs\n", session.check().text.c_str()); // "OK.": set up as needed
    return EXIT_SUCCESS;
} catch (const std::exception& error) {
    std::cerr << "first: " << error.what() << '\n';
    return EXIT_FAILURE;
}
