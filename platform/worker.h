#pragma once

#include <functional>

namespace vorlen {

// Runs the task on a new thread and returns when the task has ended. Rethrows an exception of the
// task. Throws std::system_error when the thread cannot be started or waited for. When it cannot
// be waited for, the task may still be running, so it must own all data that it uses. The thread
// keeps this image loaded until it has ended. Any thread.
void runOnWorker(std::function<void()> task);

} // namespace vorlen
