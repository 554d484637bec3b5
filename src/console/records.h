#pragma once
// The start-up items as records: the rows the window's scanners make for the
// nodes "Registry" and "Startup Folder", in that order, with where each item
// lies and what its program file is.
#include <string>
#include <vector>

#include "discovery/GetExeName.h"
#include "discovery/ItemList.h"
#include "platform/codec_port.h"
#include "platform/ports.h"

namespace tessmark::console {

struct Record {
    std::string name, path;  // as the window shows them
    bool enabled = false;
    std::string section, location;
    std::string program;  // the file the path reduces to
    bool exists = false;
    std::string description, sha256;
    std::string rawPath;  // the path as scanned, before the list marks a missing file
    discovery::ItemPlace place;
};

// The folder of Settings.ini, where the window keeps its disabled Startup items.
std::string SideFolder(platform::FilesPort& files);
std::string LocationText(const discovery::ItemPlace& place, const std::string& sideFolder);

// With `hash`, the digest of each existing program file; codec is only read then.
std::vector<Record> ListItems(platform::Ports ports, platform::CodecPort& codec, bool hash);

}  // namespace tessmark::console
