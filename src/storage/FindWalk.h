#pragma once
#include <string>

#include "platform/files_port.h"

namespace tessmark::storage {

// One FindFirstFileA/FindNextFileA walk, closed on every way out.
class FindWalk {
public:
    FindWalk(platform::FilesPort& files, const std::string& pattern, platform::FindData& data)
        : files_(files), handle_(files.FindFirstFileA(pattern.c_str(), &data)) {}
    ~FindWalk() {
        if (handle_ != platform::kInvalidFindHandle) files_.FindClose(handle_);
    }
    FindWalk(const FindWalk&) = delete;
    FindWalk& operator=(const FindWalk&) = delete;
    bool Started() const { return handle_ != platform::kInvalidFindHandle; }
    bool Next(platform::FindData& data) { return files_.FindNextFileA(handle_, &data) != 0; }

private:
    platform::FilesPort& files_;
    platform::FindHandle handle_;
};

}  // namespace tessmark::storage
