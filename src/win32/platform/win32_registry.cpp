#include "win32/platform/win32_registry.h"

#include <windows.h>

#include <cassert>

namespace tessmark::platform::win32 {
namespace {

// Key handles are 32-bit values that widen by sign extension: the predefined
// roots 0x8000000x become 0xFFFFFFFF8000000x in a 64-bit process, and the
// system keeps every other handle within 32 bits so that 32-bit and 64-bit
// processes can share them (Wine hands out small numbers).
HKEY ToHkey(RegHandle handle) {
    return reinterpret_cast<HKEY>(static_cast<INT_PTR>(static_cast<std::int32_t>(handle)));
}

RegHandle FromHkey(HKEY key) {
    const auto value = reinterpret_cast<INT_PTR>(key);
    assert(value == static_cast<std::int32_t>(value));
    return static_cast<RegHandle>(value);
}

// An in-out handle argument: what the call leaves behind, the caller's value included, comes back.
class HandleArg {
public:
    explicit HandleArg(RegHandle* result) : result_(result), key_(result ? ToHkey(*result) : nullptr) {}
    ~HandleArg() {
        if (result_) *result_ = FromHkey(key_);
    }
    HKEY* get() { return result_ ? &key_ : nullptr; }

private:
    RegHandle* result_;
    HKEY key_;
};

// An in-out DWORD argument; a null pointer stays null.
class DwordArg {
public:
    explicit DwordArg(std::uint32_t* value) : value_(value), dword_(value ? *value : 0) {}
    ~DwordArg() {
        if (value_) *value_ = dword_;
    }
    DWORD* get() { return value_ ? &dword_ : nullptr; }

private:
    std::uint32_t* value_;
    DWORD dword_;
};

}  // namespace

std::int32_t Win32Registry::RegOpenKeyA(RegHandle key, const char* subKey, RegHandle* result) {
    HandleArg out(result);
    return ::RegOpenKeyA(ToHkey(key), subKey, out.get());
}

std::int32_t Win32Registry::RegOpenKeyExA(RegHandle key, const char* subKey, std::uint32_t options,
                                          std::uint32_t samDesired, RegHandle* result) {
    HandleArg out(result);
    return ::RegOpenKeyExA(ToHkey(key), subKey, options, samDesired, out.get());
}

std::int32_t Win32Registry::RegCreateKeyA(RegHandle key, const char* subKey, RegHandle* result) {
    HandleArg out(result);
    return ::RegCreateKeyA(ToHkey(key), subKey, out.get());
}

std::int32_t Win32Registry::RegCloseKey(RegHandle key) { return ::RegCloseKey(ToHkey(key)); }

std::int32_t Win32Registry::RegDeleteKeyA(RegHandle key, const char* subKey) {
    return ::RegDeleteKeyA(ToHkey(key), subKey);
}

std::int32_t Win32Registry::RegDeleteValueA(RegHandle key, const char* valueName) {
    return ::RegDeleteValueA(ToHkey(key), valueName);
}

std::int32_t Win32Registry::RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                                          std::uint32_t* nameLength) {
    DwordArg length(nameLength);
    return ::RegEnumKeyExA(ToHkey(key), index, name, length.get(), nullptr, nullptr, nullptr, nullptr);
}

std::int32_t Win32Registry::RegEnumValueA(RegHandle key, std::uint32_t index, char* name,
                                          std::uint32_t* nameLength, std::uint32_t* type, std::uint8_t* data,
                                          std::uint32_t* dataLength) {
    DwordArg nameArg(nameLength), typeArg(type), dataArg(dataLength);
    return ::RegEnumValueA(ToHkey(key), index, name, nameArg.get(), nullptr, typeArg.get(), data, dataArg.get());
}

std::int32_t Win32Registry::RegQueryValueExA(RegHandle key, const char* valueName, std::uint32_t* type,
                                             std::uint8_t* data, std::uint32_t* dataLength) {
    DwordArg typeArg(type), dataArg(dataLength);
    return ::RegQueryValueExA(ToHkey(key), valueName, nullptr, typeArg.get(), data, dataArg.get());
}

std::int32_t Win32Registry::RegQueryInfoKeyA(RegHandle key, std::uint32_t* subKeys, std::uint32_t* values) {
    DwordArg subKeyArg(subKeys), valueArg(values);
    return ::RegQueryInfoKeyA(ToHkey(key), nullptr, nullptr, nullptr, subKeyArg.get(), nullptr, nullptr,
                              valueArg.get(), nullptr, nullptr, nullptr, nullptr);
}

std::int32_t Win32Registry::RegSetValueExA(RegHandle key, const char* valueName, std::uint32_t type,
                                           const std::uint8_t* data, std::uint32_t size) {
    return ::RegSetValueExA(ToHkey(key), valueName, 0, type, data, size);
}

}  // namespace tessmark::platform::win32
