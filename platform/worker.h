#pragma once

#include <functional>

// Runs the task on a new thread and returns when it has ended. An exception of the task is thrown
// here. A thread that cannot be started or waited for is thrown as std::system_error; in the latter
// case the task may still be running, so it must own what it uses. The thread keeps this image
// loaded until it has ended.
void runOnWorker(std::function<void()> task);
