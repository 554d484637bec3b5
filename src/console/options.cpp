#include "console/options.h"

#include "catalogue/sections.h"
#include "vb/vb.h"

namespace tessmark::console {

const char* const kUsage =
    "usage:\n"
    "  tessmarkc list [--section TEXT] [--state enabled|disabled] [--format table|csv|json] [--hash]\n"
    "  tessmarkc disable NAME --section TEXT [--path PATH | --location TEXT]\n"
    "  tessmarkc enable NAME --section TEXT [--path PATH | --location TEXT]\n"
    "  tessmarkc --help | --version\n";

namespace {

// Longer than any text the scanners read back (their buffers hold 1024 characters).
constexpr std::size_t kMaxText = 1024;

std::string CheckText(const std::string& what, const std::string& text) {
    if (text.empty()) return what + " is empty";
    if (text.size() > kMaxText) return what + " is longer than " + std::to_string(kMaxText) + " characters";
    for (unsigned char c : text)
        if (c < 0x20 || c == 0x7F) return what + " holds a control character";
    return {};
}

// The catalogue's spelling of a section the tree offers, whatever the case typed.
bool KnownSection(std::string& text) {
    for (const auto& entry : catalogue::kItemSections)
        if (vb::TextEquals(std::string(entry.path), text)) {
            text = std::string(entry.path);
            return true;
        }
    return false;
}

std::string SectionList() {
    std::string list;
    for (const auto& entry : catalogue::kItemSections) list += "\n  " + std::string(entry.path);
    return list;
}

}  // namespace

Parsed ParseOptions(const std::vector<std::string>& args) {
    Parsed result;
    Options& o = result.options;
    auto fail = [&](const std::string& message) {
        result.error = message;
        return result;
    };
    if (args.empty()) return fail("no command given");
    const std::string& verb = args[0];
    if (verb == "--help" || verb == "-h" || verb == "/?") o.command = Command::Help;
    else if (verb == "--version") o.command = Command::Version;
    else if (verb == "list") o.command = Command::List;
    else if (verb == "disable") o.command = Command::Disable;
    else if (verb == "enable") o.command = Command::Enable;
    else return fail("unknown command \"" + verb + "\"");
    const bool acts = o.command == Command::Disable || o.command == Command::Enable;
    if (o.command == Command::Help || o.command == Command::Version) {
        if (args.size() > 1) return fail("\"" + verb + "\" takes nothing more");
        return result;
    }

    bool seenName = false, seenState = false, seenFormat = false, seenSection = false;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& arg = args[i];
        auto value = [&](bool& seen, std::string* out) -> std::string {
            if (seen) return arg + " is given twice";
            if (i + 1 >= args.size()) return arg + " needs a value";
            seen = true;
            *out = args[++i];
            return CheckText(arg, *out);
        };
        std::string error, text;
        if (arg == "--section") {
            error = value(seenSection, &o.section);
            if (error.empty() && !KnownSection(o.section))
                error = "no section \"" + o.section + "\"; the sections are:" + SectionList();
        } else if (arg == "--path" && acts) {
            error = value(o.hasPath, &o.path);
        } else if (arg == "--location" && acts) {
            error = value(o.hasLocation, &o.location);
        } else if (arg == "--state" && !acts) {
            error = value(seenState, &text);
            if (text == "enabled") o.state = StateFilter::Enabled;
            else if (text == "disabled") o.state = StateFilter::Disabled;
            else if (error.empty()) error = "--state is enabled or disabled, not \"" + text + "\"";
        } else if (arg == "--format" && !acts) {
            error = value(seenFormat, &text);
            if (text == "table") o.format = Format::Table;
            else if (text == "csv") o.format = Format::Csv;
            else if (text == "json") o.format = Format::Json;
            else if (error.empty()) error = "--format is table, csv or json, not \"" + text + "\"";
        } else if (arg == "--hash" && !acts) {
            if (o.hash) error = "--hash is given twice";
            o.hash = true;
        } else if (acts && !seenName && (arg.empty() || arg.rfind("--", 0) != 0)) {
            seenName = true;
            o.name = arg;
            error = CheckText("the name", arg);
        } else {
            error = arg.rfind("--", 0) == 0 ? "unknown option " + arg + " for \"" + verb + "\""
                                            : "unexpected \"" + arg + "\"";
        }
        if (!error.empty()) return fail(error);
    }
    if (acts && !seenName) return fail("\"" + verb + "\" needs the item's name");
    if (acts && !seenSection) return fail("\"" + verb + "\" needs --section");
    if (o.hasPath && o.hasLocation) return fail("give --path or --location, not both");
    return result;
}

}  // namespace tessmark::console
