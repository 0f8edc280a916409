#pragma once

#include <cstddef>
#include <cstdint>
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

    // The lines that were added after the first `seen` ones, as far as they are kept, the oldest
    // first. UTF-8. `seen` becomes the number of all.
    std::vector<std::string> since(std::uint64_t& seen) const;

private:
    mutable std::mutex mutex;
    std::deque<std::string> lines;
    std::uint64_t count = 0; // of all, also those that are no longer kept
};

} // namespace vorlen::viewer
