// The least a console program can do to print what "tessmarkc list --format
// csv" prints for the Run family: for each value the registry calls the
// scanners make (the key's info and the name read twice, the data read by
// name), the shell asked for the icon with the scanners' flags, and the details
// of the program file (full path, existence, description, read once a file). The bench measures
// the console edition beside it; what is left between them is the program's own work.
#include <windows.h>
#include <shellapi.h>

#include <map>
#include <string>
#include <vector>

namespace {

struct RunKey {
    HKEY root;
    const char *key, *section;
};

const RunKey kKeys[] = {
    {HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", "Registry\\All Users\\Run"},
    {HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce", "Registry\\All Users\\RunOnce"},
    {HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices", "Registry\\All Users\\RunServices"},
    {HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce",
     "Registry\\All Users\\RunServicesOnce"},
    {HKEY_CURRENT_USER, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", "Registry\\Current User\\Run"},
    {HKEY_CURRENT_USER, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce", "Registry\\Current User\\RunOnce"},
    {HKEY_CURRENT_USER, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices", "Registry\\Current User\\RunServices"},
};

// Read once a file, as the console edition does.
std::string Description(const std::string& file) {
    static std::map<std::string, std::string> known;
    if (auto found = known.find(file); found != known.end()) return found->second;
    std::string& text = known[file];
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeA(file.c_str(), &ignored);
    if (size == 0) return {};
    std::vector<char> block(size);
    if (!GetFileVersionInfoA(file.c_str(), 0, size, block.data())) return {};
    WORD* language = nullptr;
    UINT length = 0;
    if (!VerQueryValueA(block.data(), "\\VarFileInfo\\Translation", reinterpret_cast<void**>(&language), &length) ||
        length < 4)
        return {};
    char path[64];
    wsprintfA(path, "\\StringFileInfo\\%04x%04x\\FileDescription", language[0], language[1]);
    char* found = nullptr;
    if (!VerQueryValueA(block.data(), path, reinterpret_cast<void**>(&found), &length)) return {};
    return text = found;
}

void PrintKey(const RunKey& run, bool enabled, std::string& out) {
    std::string subKey = std::string(run.key) + (enabled ? "" : "\\AutorunsDisabled");
    HKEY key = nullptr;
    if (RegOpenKeyExA(run.root, subKey.c_str(), 0, KEY_QUERY_VALUE, &key) != 0) return;
    DWORD count = 0;
    RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr);
    for (DWORD i = 0; i < count; ++i) {
        char name[261];
        BYTE scratch[256];
        for (int twice = 0; twice < 2; ++twice) {
            DWORD values = 0, nameLength = sizeof name, size = 255, type = 0;
            RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values, nullptr, nullptr, nullptr, nullptr);
            RegEnumValueA(key, i, name, &nameLength, nullptr, &type, scratch, &size);
        }
        char data[1025] = {};
        DWORD length = 1024, type = 0;
        RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(data), &length);
        std::string program = data;
        if (!program.empty() && program[0] == '"') program = program.substr(1, program.find('"', 1) - 1);
        else program = program.substr(0, program.find(' '));
        SHFILEINFOA info{};
        // The scanners' flags less SHGFI_EXETYPE, as the shell adapter sends them: Wine fails the call with it.
        SHGetFileInfoA(program.c_str(), 0, &info, sizeof info, 0x6603 & ~SHGFI_EXETYPE);
        char full[MAX_PATH];
        GetFullPathNameA(program.c_str(), MAX_PATH, full, nullptr);
        const bool exists = GetFileAttributesA(full) != INVALID_FILE_ATTRIBUTES;
        out += std::string(name) + "," + program + "," + (enabled ? "enabled," : "disabled,") + run.section + "," +
               (run.root == HKEY_CURRENT_USER ? "HKCU\\" : "HKLM\\") + subKey + " [" + name + "]," + full + "," +
               (exists ? "yes," : "no,") + Description(full) + "\r\n";
    }
    RegCloseKey(key);
}

}  // namespace

int main() {
    std::string out = "name,path,state,section,location,program,exists,description\r\n";
    for (const RunKey& run : kKeys) {
        PrintKey(run, true, out);
        PrintKey(run, false, out);
    }
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), out.data(), static_cast<DWORD>(out.size()), &written, nullptr);
    return 0;
}
