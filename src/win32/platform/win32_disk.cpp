#include "win32/platform/win32_disk.h"

#include <windows.h>
#include <objbase.h>
#include <objidl.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstdlib>
#include <cstring>

namespace tessmark::platform::win32 {
namespace {

template <typename T>
class ComPtr {
public:
    ComPtr() = default;
    ~ComPtr() {
        if (pointer_) pointer_->Release();
    }
    ComPtr(const ComPtr&) = delete;
    ComPtr& operator=(const ComPtr&) = delete;
    T* operator->() const { return pointer_; }
    void** Put() { return reinterpret_cast<void**>(&pointer_); }

private:
    T* pointer_ = nullptr;
};

struct HandleCloser {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

struct CoTaskMemFreer {
    void operator()(void* memory) const { ::CoTaskMemFree(memory); }
};

UniqueHandle OpenFile(const std::string& path, DWORD access, DWORD disposition) {
    HANDLE handle = ::CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return UniqueHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

bool WriteAll(HANDLE file, const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
        DWORD written = 0;
        const DWORD chunk = static_cast<DWORD>(std::min<std::size_t>(text.size() - done, 1u << 20));
        if (!::WriteFile(file, text.data() + done, chunk, &written, nullptr) || written == 0) return false;
        done += written;
    }
    return true;
}

std::wstring Wide(const std::string& text) {
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, nullptr, 0);
    std::wstring wide(length > 0 ? length : 1, L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, wide.data(), length);
    wide.resize(wide.size() - 1);
    return wide;
}

bool HasExtension(const std::string& path, const char* extension) {
    const std::size_t length = std::strlen(extension);
    return path.size() >= length && ::lstrcmpiA(path.c_str() + path.size() - length, extension) == 0;
}

DWORD Attributes(const std::string& path) { return ::GetFileAttributesA(path.c_str()); }

}  // namespace

void Win32Disk::FindCloser::operator()(void* handle) const { ::FindClose(handle); }

Win32Disk::Win32Disk() : comJoined_(SUCCEEDED(::CoInitialize(nullptr))) {}

Win32Disk::~Win32Disk() {
    if (comJoined_) ::CoUninitialize();
}

// --- Files ---

namespace {

void Fill(const WIN32_FIND_DATAA& found, FindData* data) {
    data->attributes = found.dwFileAttributes;
    data->sizeHigh = found.nFileSizeHigh;
    data->sizeLow = found.nFileSizeLow;
    static_assert(sizeof data->fileName == sizeof found.cFileName);
    std::memcpy(data->fileName, found.cFileName, sizeof data->fileName);
}

}  // namespace

FindHandle Win32Disk::FindFirstFileA(const char* pattern, FindData* data) {
    WIN32_FIND_DATAA found;
    HANDLE handle = ::FindFirstFileA(pattern, &found);
    if (handle == INVALID_HANDLE_VALUE) return kInvalidFindHandle;
    const auto key = reinterpret_cast<FindHandle>(handle);
    searches_[key].reset(handle);
    Fill(found, data);
    return key;
}

std::int32_t Win32Disk::FindNextFileA(FindHandle handle, FindData* data) {
    auto it = searches_.find(handle);
    WIN32_FIND_DATAA found;
    if (it == searches_.end() || !::FindNextFileA(it->second.get(), &found)) return 0;
    Fill(found, data);
    return 1;
}

std::int32_t Win32Disk::FindClose(FindHandle handle) { return searches_.erase(handle) ? 1 : 0; }

std::uint32_t Win32Disk::GetFileAttributesA(const char* path) { return ::GetFileAttributesA(path); }

std::uint32_t Win32Disk::GetFullPathNameA(const char* path, std::uint32_t bufferLength, char* buffer) {
    return ::GetFullPathNameA(path, bufferLength, buffer, nullptr);
}

// Scripting.FileSystemObject answers both from the file's attributes.
bool Win32Disk::FileExists(const std::string& path) {
    const DWORD attributes = Attributes(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool Win32Disk::FolderExists(const std::string& path) {
    const DWORD attributes = Attributes(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool Win32Disk::MkDir(const std::string& path) { return ::CreateDirectoryA(path.c_str(), nullptr) != FALSE; }

bool Win32Disk::Kill(const std::string& path) { return ::DeleteFileA(path.c_str()) != FALSE; }

bool Win32Disk::ReadWholeFile(const std::string& path, std::string* contents) {
    UniqueHandle file = OpenFile(path, GENERIC_READ, OPEN_EXISTING);
    if (!file) return false;
    std::string text;
    char chunk[65536];
    DWORD read = 0;
    do {
        if (!::ReadFile(file.get(), chunk, sizeof chunk, &read, nullptr)) return false;
        text.append(chunk, read);
    } while (read > 0);
    *contents = std::move(text);
    return true;
}

bool Win32Disk::WriteWholeFile(const std::string& path, const std::string& contents) {
    // Written beside the file, then moved over it, so no reader sees half of it.
    const std::string fresh = path + ".~new";
    {
        UniqueHandle file = OpenFile(fresh, GENERIC_WRITE, CREATE_ALWAYS);
        if (!file) return false;
        if (!WriteAll(file.get(), contents)) {
            file.reset();
            ::DeleteFileA(fresh.c_str());
            return false;
        }
    }
    if (!::MoveFileExA(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
        ::DeleteFileA(fresh.c_str());
        return false;
    }
    return true;
}

bool Win32Disk::AppendToFile(const std::string& path, const std::string& text) {
    UniqueHandle file = OpenFile(path, FILE_APPEND_DATA, OPEN_ALWAYS);
    return file && WriteAll(file.get(), text);
}

std::string Win32Disk::Environ(const std::string& name) {
    const DWORD needed = ::GetEnvironmentVariableA(name.c_str(), nullptr, 0);
    if (needed == 0) return {};
    std::string value(needed, '\0');
    const DWORD length = ::GetEnvironmentVariableA(name.c_str(), value.data(), needed);
    if (length == 0 || length >= needed) return {};
    value.resize(length);
    return value;
}

// --- Shell ---

std::int32_t Win32Disk::SpecialFolderPath(std::int32_t csidl, char* path260) {
    LPITEMIDLIST raw = nullptr;
    const HRESULT result = ::SHGetSpecialFolderLocation(nullptr, csidl, &raw);
    std::unique_ptr<ITEMIDLIST, CoTaskMemFreer> list(raw);
    if (FAILED(result)) return result;
    char path[MAX_PATH] = {};
    if (!::SHGetPathFromIDListA(list.get(), path)) return E_FAIL;
    std::memcpy(path260, path, std::strlen(path) + 1);
    return 0;
}

// WScript.Shell reads a shortcut through IShellLink, but Wine's cannot give the
// target back; so the link object is used directly, with WScript's outcomes:
// an error for a name that is no shortcut's, for a file that is no shortcut and
// for any failure, and an empty target for a shortcut not saved yet.
bool Win32Disk::ShortcutTarget(const std::string& lnkPath, std::string* target) {
    const bool url = HasExtension(lnkPath, ".url");
    if (!url && !HasExtension(lnkPath, ".lnk")) return false;
    const DWORD attributes = Attributes(lnkPath);
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        target->clear();
        return true;
    }
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) return false;
    if (url) {
        char full[MAX_PATH];
        const DWORD length = ::GetFullPathNameA(lnkPath.c_str(), sizeof full, full, nullptr);
        if (length == 0 || length >= sizeof full) return false;
        char address[2084] = {};
        ::GetPrivateProfileStringA("InternetShortcut", "URL", "", address, sizeof address, full);
        *target = address;
        return true;
    }
    ComPtr<IShellLinkA> link;
    ComPtr<IPersistFile> file;
    char path[MAX_PATH] = {};
    if (FAILED(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, link.Put())) ||
        FAILED(link->QueryInterface(IID_IPersistFile, file.Put())) ||
        FAILED(file->Load(Wide(lnkPath).c_str(), STGM_READ)) ||
        FAILED(link->GetPath(path, MAX_PATH, nullptr, 0)))
        return false;
    *target = path;
    return true;
}

bool Win32Disk::SaveShortcut(const std::string& lnkPath, const std::string& targetPath,
                             const std::string& iconLocation, std::int32_t windowStyle) {
    // WScript.Shell makes internet shortcuts for ".url", which have no icon
    // location or window style to set.
    if (!HasExtension(lnkPath, ".lnk")) return false;
    const std::size_t comma = iconLocation.rfind(',');
    const std::string iconFile = iconLocation.substr(0, comma);
    const int iconIndex = comma == std::string::npos ? 0 : std::atoi(iconLocation.c_str() + comma + 1);
    ComPtr<IShellLinkA> link;
    ComPtr<IPersistFile> file;
    return SUCCEEDED(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                        link.Put())) &&
           SUCCEEDED(link->SetPath(targetPath.c_str())) &&
           SUCCEEDED(link->SetIconLocation(iconFile.c_str(), iconIndex)) &&
           SUCCEEDED(link->SetShowCmd(windowStyle)) &&
           SUCCEEDED(link->QueryInterface(IID_IPersistFile, file.Put())) &&
           SUCCEEDED(file->Save(Wide(lnkPath).c_str(), TRUE));
}

std::uintptr_t Win32Disk::SHGetFileInfoA(const char* path, std::uint32_t fileAttributes, ShFileInfo* info,
                                         std::uint32_t flags) {
    // Windows ignores SHGFI_EXETYPE beside other flags; Wine fails the whole call.
    if ((flags & SHGFI_EXETYPE) && flags != SHGFI_EXETYPE) flags &= ~SHGFI_EXETYPE;
    // The callers rely on a failed call leaving the record as the last call left
    // it; Wine blanks the names, so the call fills a record of its own.
    SHFILEINFOA record = {};
    const DWORD_PTR result = ::SHGetFileInfoA(path, fileAttributes, &record, sizeof record, flags);
    if (result == 0) return 0;
    if (flags & SHGFI_ICON) info->hIcon = reinterpret_cast<std::uintptr_t>(record.hIcon);
    if (flags & (SHGFI_ICON | SHGFI_SYSICONINDEX | SHGFI_ICONLOCATION)) info->iIcon = record.iIcon;
    if (flags & SHGFI_ATTRIBUTES) info->attributes = record.dwAttributes;
    if (flags & (SHGFI_DISPLAYNAME | SHGFI_ICONLOCATION))
        std::memcpy(info->displayName, record.szDisplayName, sizeof info->displayName);
    if (flags & SHGFI_TYPENAME) std::memcpy(info->typeName, record.szTypeName, sizeof info->typeName);
    return result;
}

// --- Version resources ---

std::uint32_t Win32Disk::GetFileVersionInfoSizeA(const char* path) {
    DWORD unused = 0;
    return ::GetFileVersionInfoSizeA(path, &unused);
}

bool Win32Disk::GetFileVersionInfoA(const char* path, std::vector<std::uint8_t>* block) {
    const DWORD size = GetFileVersionInfoSizeA(path);
    block->assign(size, 0);
    if (size == 0 || !::GetFileVersionInfoA(path, 0, size, block->data())) {
        block->clear();
        return false;
    }
    return true;
}

bool Win32Disk::VerQueryValueA(const std::vector<std::uint8_t>& block, const char* subBlock,
                               std::vector<std::uint8_t>* value) {
    value->clear();
    if (block.empty()) return false;
    // The ANSI query writes converted strings into the block, so it works on a copy.
    std::vector<std::uint8_t> scratch = block;
    void* found = nullptr;
    UINT length = 0;
    if (!::VerQueryValueA(scratch.data(), subBlock, &found, &length)) return false;
    if (found && length) value->assign(static_cast<std::uint8_t*>(found), static_cast<std::uint8_t*>(found) + length);
    return true;
}

std::uint32_t Win32Disk::VerLanguageNameA(std::uint32_t language, char* buffer, std::uint32_t size) {
    const DWORD result = ::VerLanguageNameA(language, buffer, size);
    // Windows counts the characters without the NUL; Wine counts the NUL too.
    if (result == 0 || buffer == nullptr || result > size) return result;
    return static_cast<std::uint32_t>(::strnlen(buffer, size));
}

}  // namespace tessmark::platform::win32
