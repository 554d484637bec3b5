#pragma once
// The conversions of a Western-European system, computed here: code page 1252
// and the digest as FIPS 180-4 defines it.
#include "platform/codec_port.h"

namespace tessmark::platform::memory {

class MemoryCodec final : public CodecPort {
public:
    std::string AnsiToUtf8(const std::string& text) override;
    bool Sha256(const std::string& bytes, Sha256Digest* digest) override;
};

}  // namespace tessmark::platform::memory
