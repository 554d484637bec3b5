#include "win32/platform/win32_codec.h"

#include <windows.h>
#include <bcrypt.h>

namespace tessmark::platform::win32 {
namespace {

// bcrypt is loaded at the first digest, not at the start: listing without
// --hash never pays for the provider.
template <typename Function>
Function Entry(const char* name) {
    static HMODULE module = LoadLibraryA("bcrypt.dll");
    return module ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name))) : nullptr;
}

// The algorithm provider, closed on every path.
class AlgorithmHandle {
public:
    AlgorithmHandle() {
        auto open = Entry<decltype(&BCryptOpenAlgorithmProvider)>("BCryptOpenAlgorithmProvider");
        ok_ = open && BCRYPT_SUCCESS(open(&handle_, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
    }
    ~AlgorithmHandle() {
        if (ok_) Entry<decltype(&BCryptCloseAlgorithmProvider)>("BCryptCloseAlgorithmProvider")(handle_, 0);
    }
    AlgorithmHandle(const AlgorithmHandle&) = delete;
    AlgorithmHandle& operator=(const AlgorithmHandle&) = delete;
    explicit operator bool() const { return ok_; }
    BCRYPT_ALG_HANDLE get() const { return handle_; }

private:
    BCRYPT_ALG_HANDLE handle_ = nullptr;
    bool ok_ = false;
};

}  // namespace

std::string Win32Codec::AnsiToUtf8(const std::string& text) {
    if (text.empty()) return {};
    const int size = static_cast<int>(text.size());
    const int wide = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
    std::wstring utf16(static_cast<std::size_t>(wide), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), size, utf16.data(), wide);
    const int narrow = WideCharToMultiByte(CP_UTF8, 0, utf16.data(), wide, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(narrow), '\0');
    WideCharToMultiByte(CP_UTF8, 0, utf16.data(), wide, out.data(), narrow, nullptr, nullptr);
    return out;
}

bool Win32Codec::Sha256(const std::string& bytes, Sha256Digest* digest) {
    AlgorithmHandle algorithm;
    if (!algorithm) return false;
    // BCryptHash would do this in one call, but it is newer than the systems we run on.
    auto create = Entry<decltype(&BCryptCreateHash)>("BCryptCreateHash");
    auto add = Entry<decltype(&BCryptHashData)>("BCryptHashData");
    auto finish = Entry<decltype(&BCryptFinishHash)>("BCryptFinishHash");
    auto destroy = Entry<decltype(&BCryptDestroyHash)>("BCryptDestroyHash");
    BCRYPT_HASH_HANDLE hash = nullptr;
    if (!create || !add || !finish || !destroy || !BCRYPT_SUCCESS(create(algorithm.get(), &hash, nullptr, 0, nullptr, 0, 0)))
        return false;
    auto* data = reinterpret_cast<PUCHAR>(const_cast<char*>(bytes.data()));
    const bool ok = BCRYPT_SUCCESS(add(hash, data, static_cast<ULONG>(bytes.size()), 0)) &&
                    BCRYPT_SUCCESS(finish(hash, digest->data(), static_cast<ULONG>(digest->size()), 0));
    destroy(hash);
    return ok;
}

}  // namespace tessmark::platform::win32
