#pragma once
// Cuts a fuzzer's bytes into the pieces a target needs; past the end every piece is empty or zero.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/memory/memory_disk.h"

namespace tessmark::fuzz {

struct Input {
    const std::uint8_t* data;
    std::size_t size;
    std::size_t at = 0;

    bool Empty() const { return at >= size; }
    std::uint8_t Byte() { return Empty() ? 0 : data[at++]; }
    // A text of up to 255 bytes, its length in the byte before it.
    std::string Text() { return Take(Byte()); }
    // A text of up to 65,535 bytes, its length in the two bytes before it.
    std::string LongText() { const std::size_t high = Byte(); return Take(high << 8 | Byte()); }
    std::string Rest() { return Take(size - at); }
    std::string Take(std::size_t length) {
        std::string piece(reinterpret_cast<const char*>(data + at), std::min(length, size - at));
        at += piece.size();
        return piece;
    }
};

// One disk for every run, made once: making one is far dearer than a run.
inline platform::memory::MemoryDisk& SharedDisk() {
    static platform::memory::MemoryDisk disk;
    return disk;
}

}  // namespace tessmark::fuzz
