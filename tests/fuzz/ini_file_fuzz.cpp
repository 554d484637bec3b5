// The settings file as a user might have edited it: any bytes, read and written
// through every operation of the settings object.
#include "fuzz_input.h"
#include "storage/IniFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessmark::fuzz::Input input{data, size};
    auto& disk = tessmark::fuzz::SharedDisk();
    const std::string section = input.Text(), key = input.Text(), value = input.Text();
    disk.AddFile("C:\\Settings.ini", input.Rest());
    tessmark::storage::IniFile ini(disk);
    ini.IniFilePath("C:\\Settings.ini");
    ini.IniSection(section);
    ini.IniReadSection();
    ini.IniReadValue(key);
    ini.IniWriteValue(key, value);
    ini.IniDeleteKey(key);
    ini.IniReadSection();
    return 0;
}
