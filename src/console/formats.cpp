#include "console/formats.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace tessmark::console {
namespace {

std::vector<std::string> Fields(const Record& r, bool hash) {
    std::vector<std::string> fields = {r.name,    r.path,     r.enabled ? "enabled" : "disabled", r.section, r.location,
                                       r.program, r.exists ? "yes" : "no", r.description};
    if (hash) fields.push_back(r.sha256);
    return fields;
}

std::vector<std::string> Header(bool hash) {
    std::vector<std::string> names = {"name", "path", "state", "section", "location", "program", "exists", "description"};
    if (hash) names.push_back("sha256");
    return names;
}

std::string CsvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

std::string Fit(const std::string& text, std::size_t width) {
    if (text.size() <= width) return text + std::string(width - text.size(), ' ');
    if (width < 4) return text.substr(0, width);
    return text.substr(0, width - 3) + "...";
}

}  // namespace

std::string TableText(const std::vector<Record>& records, bool hash, int width) {
    std::vector<std::vector<std::string>> rows = {{"Name", "State", "Section", "Path", "Location"}};
    if (hash) rows[0].push_back("SHA-256");
    for (const Record& r : records) {
        rows.push_back({r.name, r.enabled ? "enabled" : "disabled", r.section, r.path, r.location});
        if (hash) rows.back().push_back(r.sha256);
    }
    std::vector<std::size_t> widths(rows[0].size(), 0);
    for (const auto& row : rows)
        for (std::size_t c = 0; c < row.size(); ++c) widths[c] = std::max(widths[c], row[c].size());
    // Two blanks between columns, and one column spare so that no line wraps.
    const std::size_t room = static_cast<std::size_t>(std::max(width, 20)) - 1 - 2 * (widths.size() - 1);
    auto total = [&] {
        std::size_t sum = 0;
        for (auto w : widths) sum += w;
        return sum;
    };
    while (total() > room) {
        auto widest = std::max_element(widths.begin(), widths.end());
        if (*widest <= 4) break;
        --*widest;
    }
    std::string text;
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t c = 0; c < row.size(); ++c) {
            if (c) line += "  ";
            line += Fit(row[c], widths[c]);
        }
        while (!line.empty() && line.back() == ' ') line.pop_back();
        text += line + "\n";
    }
    return text;
}

std::string CsvText(const std::vector<Record>& records, bool hash, platform::CodecPort& codec) {
    auto line = [&](const std::vector<std::string>& fields) {
        std::string text;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (i) text += ',';
            text += CsvField(codec.AnsiToUtf8(fields[i]));
        }
        return text + "\r\n";
    };
    std::string text = line(Header(hash));
    for (const Record& r : records) text += line(Fields(r, hash));
    return text;
}

std::string JsonText(const std::vector<Record>& records, bool hash, platform::CodecPort& codec) {
    const std::vector<std::string> names = Header(hash);
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const Record& r : records) {
        const std::vector<std::string> fields = Fields(r, hash);
        nlohmann::ordered_json object;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i] == "exists") object["exists"] = r.exists;
            else object[names[i]] = codec.AnsiToUtf8(fields[i]);
        }
        array.push_back(std::move(object));
    }
    // Converted text is valid UTF-8; a malformed byte is replaced rather than ending the program.
    return array.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace tessmark::console
