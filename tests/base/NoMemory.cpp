#include "tests/base/NoMemory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local int refusals = 0; // NoMemory objects that live

} // namespace

NoMemory::NoMemory() {
    ++refusals;
}

NoMemory::~NoMemory() {
    --refusals;
}

// One pair stands for the array forms too, which call it.
void* operator new(std::size_t size) {
    void* const memory = refusals > 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (!memory) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
