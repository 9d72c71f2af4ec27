#pragma once

#include <cstdlib>
#include <string>

/// An environment variable for the length of a test; null takes it away.
class TestVariable {
public:
    TestVariable(const char* name, const char* value) : name_(name) {
        const char* old = std::getenv(name);
        wasSet_ = old != nullptr;
        if (wasSet_) old_ = old;
        Set(value);
    }
    ~TestVariable() { Set(wasSet_ ? old_.c_str() : nullptr); }
    TestVariable(const TestVariable&) = delete;
    TestVariable& operator=(const TestVariable&) = delete;

private:
    void Set(const char* value) const {
        if (value != nullptr)
            ::setenv(name_, value, 1);
        else
            ::unsetenv(name_);
    }
    const char* name_;
    std::string old_;
    bool wasSet_ = false;
};

/// Hides the user's display from the programs that a test starts: the suite's then work for their time
/// instead of showing a window until somebody closes it.
class WithoutDisplay {
private:
    TestVariable x11_{"DISPLAY", nullptr};
    TestVariable wayland_{"WAYLAND_DISPLAY", nullptr};
};
