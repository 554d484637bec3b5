// The platform's code-page conversion and SHA-256, on both adapters.
#include <gtest/gtest.h>

#include "machine.h"

namespace tessmark::testing {
namespace {

TEST(CodecConformance, AnsiTextBecomesUtf8AndDigestsAreTheStandardOnes) {
    auto machine = MakeTestMachine();
    platform::CodecPort& codec = machine->Codec();
    EXPECT_EQ(codec.AnsiToUtf8(""), "");
    EXPECT_EQ(codec.AnsiToUtf8("C:\\Caf\xe9 \x80"), "C:\\Caf\xc3\xa9 \xe2\x82\xac");
    const struct { std::string bytes; const char* hex; } cases[] = {
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
        {std::string(1000, 'a') + std::string(1, '\0'), "8e047e94af2b183a25cfd0e46f0b77315a05232f5e92d60af255d1cd2066f965"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
    };
    for (const auto& c : cases) {
        platform::Sha256Digest digest{};
        EXPECT_TRUE(codec.Sha256(c.bytes, &digest));
        EXPECT_EQ(DigestOf(*machine, c.bytes), c.hex) << c.bytes.size() << " bytes";
    }
}

}  // namespace
}  // namespace tessmark::testing
