#pragma once
// The code-page calls of kernel32 and the SHA-256 provider of bcrypt.
#include "platform/codec_port.h"

namespace tessmark::platform::win32 {

class Win32Codec final : public CodecPort {
public:
    std::string AnsiToUtf8(const std::string& text) override;
    bool Sha256(const std::string& bytes, Sha256Digest* digest) override;
};

}  // namespace tessmark::platform::win32
