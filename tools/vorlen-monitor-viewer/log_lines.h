#pragma once

#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace vorlen::viewer {

// The latest log lines. Any thread.
class LogLines {
public:
    // So many are kept.
    static constexpr std::size_t most = 200;

    // Adds a line such as "warn MESSAGE". The message is UTF-8; a number that is no level is shown
    // as the nearest level.
    void add(int level, std::string_view message);

    // The oldest first. UTF-8.
    std::vector<std::string> all() const;

private:
    mutable std::mutex mutex;
    std::deque<std::string> lines;
};

} // namespace vorlen::viewer
