// Uses a session of the folder that it is given, twice in one process.
#include "session.h"

#include <exception>
#include <stdexcept>

int main(int count, char** arguments) try {
    if (count != 2) {
        return 2;
    }
    { const vorlen::Session session(arguments[1]); }
    const vorlen::Session session(arguments[1]);
    use(session);
    try {
        const vorlen::Session second(arguments[1]);
    } catch (const std::logic_error& error) {
        std::cout << error.what() << '\n';
    }
    std::cout << session.monitors().size() << '\n';
    return 0;
} catch (const std::exception& error) {
    std::cout << error.what() << '\n';
    return 1;
}
