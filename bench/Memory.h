#pragma once

#include <cstddef>
#include <malloc.h>

namespace bench {

/// What the program holds of the heap.
inline std::size_t HeapBytes() {
    const struct mallinfo2 memory = ::mallinfo2();
    return memory.uordblks + memory.hblkhd;
}

} // namespace bench
