#pragma once
// A registry held in memory, agreeing with the real one on every result the
// program relies on (the registry conformance suite pins those).
#include <map>
#include <memory>
#include <string>

#include "platform/registry_port.h"

namespace tessmark::platform::memory {

class MemoryRegistry final : public RegistryPort {
public:
    MemoryRegistry();
    ~MemoryRegistry() override;

    std::int32_t RegOpenKeyA(RegHandle key, const char* subKey, RegHandle* result) override;
    std::int32_t RegOpenKeyExA(RegHandle key, const char* subKey, std::uint32_t options,
                               std::uint32_t samDesired, RegHandle* result) override;
    std::int32_t RegCreateKeyA(RegHandle key, const char* subKey, RegHandle* result) override;
    std::int32_t RegCloseKey(RegHandle key) override;
    std::int32_t RegDeleteKeyA(RegHandle key, const char* subKey) override;
    std::int32_t RegDeleteValueA(RegHandle key, const char* valueName) override;
    std::int32_t RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                               std::uint32_t* nameLength) override;
    std::int32_t RegEnumValueA(RegHandle key, std::uint32_t index, char* name, std::uint32_t* nameLength,
                               std::uint32_t* type, std::uint8_t* data, std::uint32_t* dataLength) override;
    std::int32_t RegQueryValueExA(RegHandle key, const char* valueName, std::uint32_t* type,
                                  std::uint8_t* data, std::uint32_t* dataLength) override;
    std::int32_t RegQueryInfoKeyA(RegHandle key, std::uint32_t* subKeys, std::uint32_t* values) override;
    std::int32_t RegSetValueExA(RegHandle key, const char* valueName, std::uint32_t type,
                                const std::uint8_t* data, std::uint32_t size) override;

    // For tests: the key (created when missing) refuses opens that ask for any
    // write right with 5, as a key whose permissions allow reading only. Opens
    // for the maximum allowed (RegOpenKeyA, RegCreateKeyA) get reading rights.
    void DenyWrites(RegHandle root, const std::string& subKey);

private:
    struct Key;
    struct Open {
        std::shared_ptr<Key> key;
        std::uint32_t access;
    };

    // The open key behind a handle, checked for the rights an operation needs.
    std::int32_t Use(RegHandle handle, std::uint32_t access, Open* open) const;
    // Walks a subkey text from a key; creates the missing keys when asked.
    std::int32_t Walk(const std::shared_ptr<Key>& from, const char* subKey, bool create,
                      std::shared_ptr<Key>* found);
    std::int32_t OpenAt(RegHandle key, const char* subKey, bool create, std::uint32_t access,
                        RegHandle* result);
    RegHandle NewHandle(std::shared_ptr<Key> key, std::uint32_t access);

    std::map<RegHandle, std::shared_ptr<Key>> roots_;
    std::map<RegHandle, Open> handles_;
    RegHandle next_ = 0x30;  // like the real handles: small multiples of 4, never 0
};

}  // namespace tessmark::platform::memory
