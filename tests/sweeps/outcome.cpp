#include "tests/sweeps/outcome.h"

#include <comdef.h>

#include <iomanip>
#include <new>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace tests {

std::string outcomeOf(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const std::bad_alloc&) {
        return "std::bad_alloc";
    } catch (const std::system_error&) {
        return "std::system_error";
    } catch (const std::runtime_error&) {
        return "std::runtime_error";
    } catch (const _com_error& error) {
        std::ostringstream text;
        text << "_com_error 0x" << std::hex << std::setw(8) << std::setfill('0')
             << static_cast<unsigned long>(error.Error());
        return text.str();
    } catch (...) {
        return "another exception";
    }
    return "returned";
}

} // namespace tests
