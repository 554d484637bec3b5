#include "console/console.h"

#include "console/formats.h"
#include "console/moves.h"
#include "console/options.h"
#include "console/records.h"
#include "vb/vb.h"

namespace tessmark::console {

namespace {

bool Shows(const Record& r, const Options& o) {
    if (!o.section.empty() && r.section != o.section) return false;
    return o.state == StateFilter::Any || r.enabled == (o.state == StateFilter::Enabled);
}

int List(const Options& o, platform::Ports ports, platform::CodecPort& codec, const Terminal& terminal,
         Output& output) {
    std::vector<Record> records;
    for (Record& r : ListItems(ports, codec, o.hash))
        if (Shows(r, o)) records.push_back(std::move(r));
    Format format = o.format;
    if (format == Format::Default) format = terminal.isConsole ? Format::Table : Format::Csv;
    if (format == Format::Table) output.out = TableText(records, o.hash, terminal.width);
    else if (format == Format::Csv) output.out = CsvText(records, o.hash, codec);
    else output.out = JsonText(records, o.hash, codec);
    return 0;
}

bool IsFolderItem(const Record& r) {
    return r.place.kind == discovery::ItemPlace::Kind::Shortcut ||
           r.place.kind == discovery::ItemPlace::Kind::SettingsLine;
}

// The one row the command means: by state, name and section, then by path or
// location. Registry rows alike in path stand for one place; folder rows are
// told apart only by their location.
int Find(const Options& o, const std::vector<Record>& records, const Record*& found, Output& output) {
    const bool disabling = o.command == Command::Disable;
    std::vector<const Record*> matches;
    for (const Record& r : records)
        if (r.enabled == disabling && r.name == o.name && r.section == o.section &&
            (!o.hasPath || r.path == o.path) && (!o.hasLocation || r.location == o.location))
            matches.push_back(&r);
    const std::string state = disabling ? "enabled" : "disabled";
    if (matches.empty()) {
        output.err = "tessmarkc: no " + state + " item \"" + o.name + "\" in " + o.section +
                     (o.hasPath ? " with path " + o.path : "") + (o.hasLocation ? " at " + o.location : "") + "\n";
        return 2;
    }
    bool same = true;
    for (const Record* m : matches)
        same = same && (m->location == matches[0]->location ||
                        (!IsFolderItem(*m) && !IsFolderItem(*matches[0]) && m->path == matches[0]->path));
    if (!same) {
        output.err = "tessmarkc: " + std::to_string(matches.size()) + " " + state + " items match \"" + o.name +
                     "\"; name one by " + (IsFolderItem(*matches[0]) ? "--location" : "--path or --location") + ":\n";
        for (const Record* m : matches) output.err += "  path " + m->path + "\n  location " + m->location + "\n";
        return 3;
    }
    found = matches[0];
    return 0;
}

int Act(const Options& o, platform::Ports ports, platform::CodecPort& codec, Output& output) {
    const std::vector<Record> records = ListItems(ports, codec, false);
    const Record* record = nullptr;
    if (int code = Find(o, records, record, output)) return code;
    const bool disabling = o.command == Command::Disable;
    const Outcome outcome = disabling ? DisableItem(ports, *record) : EnableItem(ports, *record);
    if (outcome.code != 0) {
        output.err = "tessmarkc: could not " + std::string(disabling ? "disable" : "enable") + " \"" + o.name +
                     "\": " + outcome.message + "\n";
        return outcome.code;
    }
    output.out = std::string(disabling ? "disabled" : "enabled") + " \"" + o.name + "\" in " + o.section +
                 " (was " + record->location + ")\n";
    return 0;
}

}  // namespace

int Run(const std::vector<std::string>& args, platform::Ports ports, platform::CodecPort& codec,
        const Terminal& terminal, Output& output) {
    const Parsed parsed = ParseOptions(args);
    if (!parsed.error.empty()) {
        output.err = "tessmarkc: " + parsed.error + "\n" + kUsage;
        return 1;
    }
    const Options& o = parsed.options;
    try {
        switch (o.command) {
            case Command::Help:
                output.out = std::string("Lists the programs that start with Windows, and disables or enables one.\n") +
                             kUsage;
                return 0;
            case Command::Version: output.out = "tessmarkc " + terminal.version + "\n"; return 0;
            case Command::List: return List(o, ports, codec, terminal, output);
            case Command::Disable:
            case Command::Enable: return Act(o, ports, codec, output);
        }
    } catch (const vb::VbError& error) {
        // The scanners trap what the window traps; what is left ends here, not in a crash.
        output.err = "tessmarkc: run-time error " + std::to_string(error.number()) + "\n";
        return 4;
    }
    return 1;
}

}  // namespace tessmark::console
