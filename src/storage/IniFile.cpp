#include "storage/IniFile.h"

#include <optional>
#include <vector>

#include "storage/filesearch.h"

namespace tessmark::storage {

namespace {

// The file as lines, with the positions of one section's heading and end.
struct Parsed {
    std::vector<std::string> lines;
    long heading = -1;  // index of "[section]", -1 when absent
    long end = 0;       // one past the section's last line
};

std::string Strip(const std::string& text) {
    std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool IsHeading(const std::string& line, std::string* name) {
    std::string t = Strip(line);
    if (t.size() < 2 || t.front() != '[') return false;
    std::size_t close = t.find(']');
    if (close == std::string::npos) return false;
    *name = Strip(t.substr(1, close - 1));
    return true;
}

// The key of a "key=value" line, or false for lines without "=".
bool KeyOf(const std::string& line, std::string* key) {
    std::size_t eq = line.find('=');
    if (eq == std::string::npos) return false;
    *key = Strip(line.substr(0, eq));
    return true;
}

Parsed Parse(const std::string& contents, const std::string& section) {
    Parsed parsed;
    std::size_t start = 0;
    while (start < contents.size()) {
        std::size_t newline = contents.find('\n', start);
        std::size_t stop = newline == std::string::npos ? contents.size() : newline;
        std::string line = contents.substr(start, stop - start);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        parsed.lines.push_back(line);
        start = stop + 1;
    }
    parsed.end = static_cast<long>(parsed.lines.size());
    for (long i = 0; i < static_cast<long>(parsed.lines.size()); ++i) {
        std::string name;
        if (!IsHeading(parsed.lines[i], &name)) continue;
        if (parsed.heading >= 0) {
            parsed.end = i;
            break;
        }
        if (vb::TextEquals(name, section)) parsed.heading = i;
    }
    return parsed;
}

long FindKey(const Parsed& parsed, const std::string& key) {
    if (parsed.heading < 0) return -1;
    for (long i = parsed.heading + 1; i < parsed.end; ++i) {
        std::string k;
        if (KeyOf(parsed.lines[i], &k) && vb::TextEquals(k, key)) return i;
    }
    return -1;
}

std::string Join(const std::vector<std::string>& lines) {
    std::string out;
    for (const auto& line : lines) out += line + "\r\n";
    return out;
}

}  // namespace

std::string IniFile::IniReadValue(const std::string& key, const std::string& defaultValue) {
    std::string contents;
    if (!files_.ReadWholeFile(path_, &contents)) return defaultValue;
    Parsed parsed = Parse(contents, StripAtNull(section_));
    long at = FindKey(parsed, StripAtNull(key));
    if (at < 0) return defaultValue;
    const std::string& line = parsed.lines[at];
    std::string value = Strip(line.substr(line.find('=') + 1));
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
        value = value.substr(1, value.size() - 2);
    return value;
}

std::string IniTextWithValue(const std::string& contents, const std::string& sectionName, const std::string& key,
                             const std::string& value) {
    std::string section = StripAtNull(sectionName), name = StripAtNull(key);
    Parsed parsed = Parse(contents, section);
    std::string line = name + "=" + StripAtNull(value);
    long at = FindKey(parsed, name);
    if (at >= 0) {
        // A replaced line keeps the key as the file spells it.
        std::string existing;
        KeyOf(parsed.lines[at], &existing);
        parsed.lines[at] = existing + "=" + StripAtNull(value);
    } else if (parsed.heading >= 0) {
        // After the section's last non-blank line.
        long insert = parsed.end;
        while (insert > parsed.heading + 1 && Strip(parsed.lines[insert - 1]).empty()) --insert;
        parsed.lines.insert(parsed.lines.begin() + insert, line);
    } else {
        while (!parsed.lines.empty() && Strip(parsed.lines.back()).empty()) parsed.lines.pop_back();
        parsed.lines.push_back("[" + section + "]");
        parsed.lines.push_back(line);
    }
    return Join(parsed.lines);
}

std::optional<std::string> IniTextWithoutKey(const std::string& contents, const std::string& section,
                                             const std::string& key, bool dropEmptySection) {
    Parsed parsed = Parse(contents, StripAtNull(section));
    long at = FindKey(parsed, StripAtNull(key));
    if (at < 0) return std::nullopt;
    parsed.lines.erase(parsed.lines.begin() + at);
    bool empty = true;
    for (long i = parsed.heading + 1; i < parsed.end - 1; ++i) empty = empty && Strip(parsed.lines[i]).empty();
    if (dropEmptySection && empty)
        parsed.lines.erase(parsed.lines.begin() + parsed.heading, parsed.lines.begin() + parsed.end - 1);
    return Join(parsed.lines);
}

void IniFile::IniWriteValue(const std::string& key, const std::string& value) {
    std::string contents;
    files_.ReadWholeFile(path_, &contents);
    files_.WriteWholeFile(path_, IniTextWithValue(contents, section_, key, value));
}

void IniFile::IniDeleteKey(const std::string& key) {
    std::string contents;
    if (!files_.ReadWholeFile(path_, &contents)) return;
    if (auto text = IniTextWithoutKey(contents, section_, key)) files_.WriteWholeFile(path_, *text);
}

vb::Array<std::string> IniFile::IniReadSection() {
    vb::Array<std::string> result;
    result.ReDim(0);
    std::string contents;
    if (!files_.ReadWholeFile(path_, &contents)) return result;
    Parsed parsed = Parse(contents, StripAtNull(section_));
    if (parsed.heading < 0) return result;
    long n = 0;
    for (long i = parsed.heading + 1; i < parsed.end; ++i) {
        std::string line = Strip(parsed.lines[i]);
        if (line.empty() || line.front() == ';') continue;
        result[n++] = line;
        result.ReDimPreserve(n);
    }
    return result;
}

}  // namespace tessmark::storage
