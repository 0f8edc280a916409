#pragma once

#include <stdexcept>

namespace simulation {

// Base of classes with at most one object at a time. The replacements of imported functions are
// static functions: get() returns their object.
template <typename Part>
class Current {
public:
    Current(const Current&) = delete;
    Current& operator=(const Current&) = delete;

    static Part& get() { return *part; }

protected:
    Current() {
        if (part != nullptr) {
            throw std::logic_error("only one object of this class may live at a time");
        }
        part = static_cast<Part*>(this);
    }
    ~Current() { part = nullptr; }

private:
    static inline Part* part = nullptr;
};

} // namespace simulation
