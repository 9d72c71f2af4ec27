#pragma once

#include "console/Writer.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

/// A writer and what it wrote.
class Capture {
public:
    explicit Capture(arvon::console::Writer::Form form, bool calls = true)
        : out_(open_memstream(&text_, &size_)), writer(arvon::console::Writer::Create(form, calls, out_)) {}
    ~Capture() {
        std::fclose(out_);
        std::free(text_);
    }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    /// Everything written since the last time.
    std::string Take() {
        std::fflush(out_);
        std::string taken(text_ + taken_, size_ - taken_);
        taken_ = size_;
        return taken;
    }

private:
    char* text_ = nullptr;
    std::size_t size_ = 0;
    std::size_t taken_ = 0;
    std::FILE* out_;

public:
    const std::unique_ptr<arvon::console::Writer> writer;
};
