#pragma once
// The platform calls of the program's Run-key scanners, for the start-up floors:
// each key opened and counted as the program walks it, and for each value the
// key's info and the name read twice, the data read by name, and the shell
// asked for the data's icon with the program's flags.
#include <windows.h>
#include <shellapi.h>

#include <string>
#include <vector>

namespace tessmark::tools {

struct Row {
    std::string name, data;
    int icon;
    DWORD_PTR images;  // the system image list the icon is in
};

inline void WalkAsTheProgram(std::vector<Row>& rows, HKEY root, const std::string& subKey) {
    HKEY key = nullptr;
    RegOpenKeyExA(HKEY_LOCAL_MACHINE, subKey.c_str(), 0, KEY_QUERY_VALUE, &key);
    if (root != HKEY_LOCAL_MACHINE) {
        RegCloseKey(key);
        key = nullptr;
        RegOpenKeyExA(root, subKey.c_str(), 0, KEY_QUERY_VALUE, &key);
    }
    DWORD values = 0;
    RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values, nullptr, nullptr, nullptr,
                     nullptr);
    for (DWORD index = 0; index < values; ++index) {
        char name[261] = {};  // a value whose data does not fit leaves it untouched
        for (int read = 0; read < 2; ++read) {
            BYTE unread[256];
            DWORD nameLength = sizeof name, unreadLength = 255, type = 0, count = 0;
            RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, &count, nullptr, nullptr, nullptr,
                             nullptr);
            RegEnumValueA(key, index, name, &nameLength, nullptr, &type, unread, &unreadLength);
        }
        char data[1025] = {};  // 1,024 offered, as the program does, and a NUL behind them
        DWORD dataLength = 1024, type = 0;
        RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(data), &dataLength);
        SHFILEINFOA info{};
        // The program's flags less the executable type, which Wine refuses beside the others.
        const auto images = SHGetFileInfoA(data, 0, &info, sizeof info,
                                           SHGFI_SYSICONINDEX | SHGFI_TYPENAME | SHGFI_DISPLAYNAME | SHGFI_OPENICON |
                                               SHGFI_SMALLICON);
        rows.push_back({name, data, info.iIcon, images});
    }
    RegCloseKey(key);
}

}  // namespace tessmark::tools
