#pragma once
// The console program's command line: one command, its item and its options.
#include <string>
#include <vector>

namespace tessmark::console {

enum class Command { Help, Version, List, Disable, Enable };
enum class Format { Default, Table, Csv, Json };
enum class StateFilter { Any, Enabled, Disabled };

struct Options {
    Command command = Command::Help;
    std::string name;
    std::string section;  // in the catalogue's spelling once parsed; empty: any
    std::string path, location;
    bool hasPath = false, hasLocation = false;
    StateFilter state = StateFilter::Any;
    Format format = Format::Default;
    bool hash = false;
};

struct Parsed {
    Options options;
    std::string error;  // empty when the line is good
};

Parsed ParseOptions(const std::vector<std::string>& args);

extern const char* const kUsage;

}  // namespace tessmark::console
