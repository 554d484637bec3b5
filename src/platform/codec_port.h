#pragma once
// Conversions the platform does for us: text from the system's ANSI code page
// to UTF-8, and the SHA-256 digest of a block of bytes.
#include <array>
#include <cstdint>
#include <string>

namespace tessmark::platform {

using Sha256Digest = std::array<std::uint8_t, 32>;

class CodecPort {
public:
    virtual ~CodecPort() = default;
    virtual std::string AnsiToUtf8(const std::string& text) = 0;
    // False when the platform's provider cannot be had.
    virtual bool Sha256(const std::string& bytes, Sha256Digest* digest) = 0;
};

}  // namespace tessmark::platform
