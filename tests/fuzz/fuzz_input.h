#pragma once
// Cuts a fuzzer's bytes into the pieces a target needs; past the end every
// piece is empty or zero.
#include <cstddef>
#include <cstdint>
#include <string>

namespace tessmark::fuzz {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool Empty() const { return at_ >= size_; }
    std::uint8_t Byte() { return Empty() ? 0 : data_[at_++]; }
    // A text of up to 255 bytes, its length in the byte before it.
    std::string Text() { return Take(Byte()); }
    // A text of up to 65,535 bytes, its length in the two bytes before it.
    std::string LongText() {
        const std::size_t high = Byte();
        return Take(high << 8 | Byte());
    }
    std::string Rest() { return Take(size_ - at_); }

private:
    std::string Take(std::size_t length) {
        if (length > size_ - at_) length = Empty() ? 0 : size_ - at_;
        std::string piece(reinterpret_cast<const char*>(data_ + at_), length);
        at_ += length;
        return piece;
    }

    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

}  // namespace tessmark::fuzz
