#include "platform/memory/memory_registry.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace tessmark::platform::memory {
namespace {

constexpr std::int32_t kBadPathname = 161;
constexpr std::int32_t kNoAccess = 998;
constexpr std::int32_t kKeyDeleted = 1018;

constexpr std::uint32_t kQueryValue = 0x0001;
constexpr std::uint32_t kSetValue = 0x0002;
constexpr std::uint32_t kEnumerateSubKeys = 0x0008;
constexpr std::uint32_t kDelete = 0x10000;
constexpr std::uint32_t kMaximumAllowed = 0x02000000;
// KEY_SET_VALUE, KEY_CREATE_SUB_KEY, KEY_CREATE_LINK, DELETE, WRITE_DAC, WRITE_OWNER
constexpr std::uint32_t kWriteRights = 0x0002 | 0x0004 | 0x0020 | 0x10000 | 0x40000 | 0x80000;

// The longest subkey text the ANSI calls convert, and the longest name of one key and of a value.
constexpr std::size_t kMaxSubKeyText = 260;
constexpr std::size_t kMaxKeyName = 256;
constexpr std::size_t kMaxValueName = 16383;

char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameName(const std::string& a, const std::string& b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Lower(x) == Lower(y); });
}

// The real registry enumerates subkeys sorted by name, letters compared as lower case.
bool NameBefore(const std::string& a, const std::string& b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return static_cast<unsigned char>(Lower(x)) < static_cast<unsigned char>(Lower(y));
    });
}

bool IsString(std::uint32_t type) { return type == reg::kSz || type == reg::kExpandSz || type == reg::kMultiSz; }

bool IsPredefined(RegHandle handle) { return handle >= reg::kClassesRoot && handle <= reg::kDynData; }

struct Value {
    std::string name;
    std::uint32_t type = reg::kNone;
    std::vector<std::uint8_t> data;
};

// Copies a value's data as the ANSI calls do: 234 and the buffer untouched when it
// doesn't fit; a string stored without its NUL gets one behind it if there is room.
std::int32_t CopyData(const Value& value, std::uint8_t* data, std::uint32_t capacity) {
    if (!data) return reg::kSuccess;
    const std::size_t length = value.data.size();
    if (length > capacity) return reg::kMoreData;
    std::copy(value.data.begin(), value.data.end(), data);
    if (IsString(value.type) && length > 0 && length < capacity && data[length - 1] != 0) data[length] = 0;
    return reg::kSuccess;
}

}  // namespace

struct MemoryRegistry::Key {
    std::string name;
    std::weak_ptr<Key> parent;  // empty for a root
    std::vector<std::shared_ptr<Key>> subKeys;  // sorted by NameBefore
    std::vector<Value> values;                  // in creation order
    bool deleted = false;
    bool denyWrites = false;

    Value* FindValue(const char* valueName) {
        const std::string wanted = valueName ? valueName : "";
        auto it = std::find_if(values.begin(), values.end(), [&](const Value& v) { return SameName(v.name, wanted); });
        return it == values.end() ? nullptr : &*it;
    }
};

MemoryRegistry::MemoryRegistry() {
    // HKEY_PERFORMANCE_DATA is no key to open, enumerate or write: the calls give 6.
    for (RegHandle root : {reg::kClassesRoot, reg::kCurrentUser, reg::kLocalMachine, reg::kUsers,
                           reg::kCurrentConfig, reg::kDynData})
        roots_[root] = std::make_shared<Key>();
}

MemoryRegistry::~MemoryRegistry() = default;

std::int32_t MemoryRegistry::Use(RegHandle handle, std::uint32_t access, Open* open) const {
    if (auto root = roots_.find(handle); root != roots_.end()) {
        *open = {root->second, reg::kAllAccess};
    } else if (auto it = handles_.find(handle); it != handles_.end()) {
        *open = it->second;
    } else {
        return reg::kInvalidHandle;
    }
    if ((open->access & access) != access) return reg::kAccessDenied;
    if (open->key->deleted) return kKeyDeleted;
    return reg::kSuccess;
}

std::int32_t MemoryRegistry::Walk(const std::shared_ptr<Key>& from, const char* subKey, bool create,
                                  std::shared_ptr<Key>* found) {
    const std::string path = subKey ? subKey : "";
    if (path.size() > kMaxSubKeyText) return reg::kMoreData;
    if (!path.empty() && path.front() == '\\') return kBadPathname;
    // Empty parts (a trailing or doubled backslash) are skipped.
    std::vector<std::string> names;
    for (std::size_t start = 0; start <= path.size();) {
        std::size_t end = std::min(path.find('\\', start), path.size());
        if (end > start) names.push_back(path.substr(start, end - start));
        if (end - start > kMaxKeyName) return reg::kInvalidParameter;
        start = end + 1;
    }
    std::shared_ptr<Key> key = from;
    for (const std::string& name : names) {
        auto& children = key->subKeys;
        auto it = std::find_if(children.begin(), children.end(), [&](const auto& k) { return SameName(k->name, name); });
        if (it == children.end()) {
            if (!create) return reg::kFileNotFound;
            if (key->denyWrites) return reg::kAccessDenied;
            auto child = std::make_shared<Key>();
            child->name = name;
            child->parent = key;
            auto at = std::upper_bound(children.begin(), children.end(), child,
                                       [](const auto& a, const auto& b) { return NameBefore(a->name, b->name); });
            it = children.insert(at, std::move(child));
        }
        key = *it;
    }
    *found = std::move(key);
    return reg::kSuccess;
}

RegHandle MemoryRegistry::NewHandle(std::shared_ptr<Key> key, std::uint32_t access) {
    // Numbers are never reused, so a handle closed twice cannot hit a newer key.
    const RegHandle handle = next_;
    next_ += 4;
    handles_[handle] = {std::move(key), access};
    return handle;
}

std::int32_t MemoryRegistry::OpenAt(RegHandle key, const char* subKey, bool create, std::uint32_t access,
                                    RegHandle* result) {
    if (key == 0) return reg::kInvalidHandle;
    *result = 0;
    Open from;
    if (std::int32_t rc = Use(key, 0, &from)) return rc;
    std::shared_ptr<Key> found;
    if (std::int32_t rc = Walk(from.key, subKey, create, &found)) return rc;
    if (access & kMaximumAllowed) {
        access = found->denyWrites ? reg::kRead : reg::kAllAccess;
    } else if (found->denyWrites && (access & kWriteRights)) {
        return reg::kAccessDenied;
    }
    *result = NewHandle(std::move(found), access);
    return reg::kSuccess;
}

std::int32_t MemoryRegistry::RegOpenKeyA(RegHandle key, const char* subKey, RegHandle* result) {
    // No subkey: the very handle that was passed in comes back, unchecked.
    if (!subKey || !*subKey) {
        *result = key;
        return reg::kSuccess;
    }
    return OpenAt(key, subKey, false, kMaximumAllowed, result);
}

std::int32_t MemoryRegistry::RegOpenKeyExA(RegHandle key, const char* subKey, std::uint32_t,
                                           std::uint32_t samDesired, RegHandle* result) {
    // A predefined root opened without a subkey is the root itself; any other key gets a new handle.
    if ((!subKey || !*subKey) && IsPredefined(key)) {
        *result = key;
        return reg::kSuccess;
    }
    return OpenAt(key, subKey, false, samDesired, result);
}

std::int32_t MemoryRegistry::RegCreateKeyA(RegHandle key, const char* subKey, RegHandle* result) {
    return OpenAt(key, subKey, true, kMaximumAllowed, result);
}

std::int32_t MemoryRegistry::RegCloseKey(RegHandle key) {
    if (key == 0) return reg::kInvalidHandle;
    if (key >= reg::kClassesRoot) return reg::kSuccess;  // every predefined number closes without effect
    return handles_.erase(key) ? reg::kSuccess : reg::kInvalidHandle;
}

std::int32_t MemoryRegistry::RegDeleteKeyA(RegHandle key, const char* subKey) {
    if (!subKey) return reg::kInvalidParameter;
    RegHandle opened = 0;
    if (std::int32_t rc = OpenAt(key, subKey, false, kDelete, &opened)) return rc;
    std::shared_ptr<Key> victim = handles_.at(opened).key;
    RegCloseKey(opened);
    std::shared_ptr<Key> parent = victim->parent.lock();
    if (!parent || !victim->subKeys.empty()) return reg::kAccessDenied;
    std::erase(parent->subKeys, victim);
    victim->deleted = true;  // handles still open on it now give 1018
    return reg::kSuccess;
}

std::int32_t MemoryRegistry::RegDeleteValueA(RegHandle key, const char* valueName) {
    Open open;
    if (std::int32_t rc = Use(key, kSetValue, &open)) return rc;
    Value* value = open.key->FindValue(valueName);
    if (!value) return reg::kFileNotFound;
    open.key->values.erase(open.key->values.begin() + (value - open.key->values.data()));
    return reg::kSuccess;
}

std::int32_t MemoryRegistry::RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                                           std::uint32_t* nameLength) {
    if (!name || !nameLength) return reg::kInvalidParameter;
    Open open;
    if (std::int32_t rc = Use(key, kEnumerateSubKeys, &open)) return rc;
    if (index >= open.key->subKeys.size()) return reg::kNoMoreItems;
    const std::string& found = open.key->subKeys[index]->name;
    // The length counts no NUL, yet the buffer must hold one: a name that fills it writes nothing.
    if (found.size() >= *nameLength) return reg::kMoreData;
    std::memcpy(name, found.c_str(), found.size() + 1);
    *nameLength = static_cast<std::uint32_t>(found.size());
    return reg::kSuccess;
}

std::int32_t MemoryRegistry::RegEnumValueA(RegHandle key, std::uint32_t index, char* name,
                                           std::uint32_t* nameLength, std::uint32_t* type, std::uint8_t* data,
                                           std::uint32_t* dataLength) {
    if (!name || !nameLength || (data && !dataLength)) return reg::kInvalidParameter;
    Open open;
    if (std::int32_t rc = Use(key, kQueryValue, &open)) return rc;
    if (index >= open.key->values.size()) return reg::kNoMoreItems;
    const Value& value = open.key->values[index];
    // Data goes first; the name is written only when the data fitted. A name too long
    // for the buffer is cut to fill it, NUL included, and its length stays as it was.
    std::int32_t rc = CopyData(value, data, dataLength ? *dataLength : 0);
    if (rc == reg::kSuccess) {
        const std::size_t length = value.name.size();
        if (length >= *nameLength) {
            rc = reg::kMoreData;
            if (*nameLength > 0) {
                std::memcpy(name, value.name.data(), *nameLength - 1);
                name[*nameLength - 1] = 0;
            }
        } else {
            std::memcpy(name, value.name.c_str(), length + 1);
            *nameLength = static_cast<std::uint32_t>(length);
        }
    }
    if (type) *type = value.type;
    if (dataLength) *dataLength = static_cast<std::uint32_t>(value.data.size());
    return rc;
}

std::int32_t MemoryRegistry::RegQueryValueExA(RegHandle key, const char* valueName, std::uint32_t* type,
                                              std::uint8_t* data, std::uint32_t* dataLength) {
    if (data && !dataLength) return reg::kInvalidParameter;
    if (key == 0) return reg::kInvalidHandle;
    const std::uint32_t capacity = dataLength ? *dataLength : 0;
    // Reset before the lookup, so a missing value reports type 0.
    if (type) *type = reg::kNone;
    if (!data && dataLength) *dataLength = 0;
    Open open;
    if (std::int32_t rc = Use(key, kQueryValue, &open)) return rc;
    const Value* value = open.key->FindValue(valueName);
    if (!value) return reg::kFileNotFound;
    const std::int32_t rc = CopyData(*value, data, capacity);
    if (type) *type = value->type;
    if (dataLength) *dataLength = static_cast<std::uint32_t>(value->data.size());
    return rc;
}

std::int32_t MemoryRegistry::RegQueryInfoKeyA(RegHandle key, std::uint32_t* subKeys, std::uint32_t* values) {
    Open open;
    if (std::int32_t rc = Use(key, 0, &open)) return rc;
    if (subKeys) *subKeys = static_cast<std::uint32_t>(open.key->subKeys.size());
    if (values) *values = static_cast<std::uint32_t>(open.key->values.size());
    return reg::kSuccess;
}

std::int32_t MemoryRegistry::RegSetValueExA(RegHandle key, const char* valueName, std::uint32_t type,
                                            const std::uint8_t* data, std::uint32_t size) {
    Open open;
    if (std::int32_t rc = Use(key, kSetValue, &open)) return rc;
    if (valueName && std::strlen(valueName) > kMaxValueName) return reg::kInvalidParameter;
    if (!data && size > 0) return kNoAccess;
    // A string counted without its terminating NUL gets the NUL counted, when one follows.
    if (IsString(type) && size > 0 && data[size - 1] != 0 && data[size] == 0) ++size;
    Value* value = open.key->FindValue(valueName);
    if (!value) value = &open.key->values.emplace_back(Value{valueName ? valueName : "", {}, {}});
    value->type = type;
    value->data.assign(data, data + size);
    return reg::kSuccess;
}

void MemoryRegistry::DenyWrites(RegHandle root, const std::string& subKey) {
    std::shared_ptr<Key> key;
    if (Walk(roots_.at(root), subKey.c_str(), true, &key) == reg::kSuccess) key->denyWrites = true;
}

}  // namespace tessmark::platform::memory
