#pragma once

// Sets a flag, which must be clear, until its own end.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& marked) : flag(marked) { marked = true; }
    ~ScopedFlag() { flag = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& flag;
};
