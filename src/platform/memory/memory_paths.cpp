#include "platform/memory/memory_paths.h"

#include <algorithm>
#include <vector>

namespace tessmark::platform::memory {
namespace {

char Upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

bool IsDriveLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

bool EqualsNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Upper(x) == Upper(y); });
}

bool NoCaseLess::operator()(std::string_view a, std::string_view b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return Upper(x) < Upper(y); });
}

std::optional<std::string> FullPath(std::string_view input, std::string_view currentFolder) {
    if (input.empty()) return std::nullopt;
    std::string path(input);
    std::replace(path.begin(), path.end(), '/', '\\');
    if (path.rfind("\\\\", 0) == 0) return path;  // network paths are not ours to resolve

    const std::string_view cwdRest = currentFolder.size() > 3 ? currentFolder.substr(3) : std::string_view{};
    std::string root;
    std::string rest;
    if (path.size() >= 2 && IsDriveLetter(path[0]) && path[1] == ':') {
        root = path.substr(0, 2);
        if (path.size() >= 3 && path[2] == '\\')
            rest = path.substr(3);
        else if (Upper(path[0]) == Upper(currentFolder[0]))
            rest = path.size() == 2 ? std::string(cwdRest) : std::string(cwdRest) + "\\" + path.substr(2);
        else
            rest = path.substr(2);
    } else {
        root = std::string(currentFolder.substr(0, 2));
        rest = path[0] == '\\' ? path.substr(1) : std::string(cwdRest) + "\\" + path;
    }

    std::vector<std::string> elements;
    bool trailingBackslash = !rest.empty() && rest.back() == '\\';
    std::size_t start = 0;
    while (start <= rest.size()) {
        std::size_t end = rest.find('\\', start);
        if (end == std::string::npos) end = rest.size();
        std::string element = rest.substr(start, end - start);
        const bool last = end == rest.size();
        if (element == "..") {
            if (!elements.empty()) elements.pop_back();
        } else if (!element.empty() && element != ".") {
            if (last) {
                element.erase(element.find_last_not_of(". ") + 1);
                if (element.empty()) trailingBackslash = true;
            }
            if (!element.empty()) elements.push_back(element);
        }
        start = end + 1;
    }

    std::string full = root + "\\";
    for (std::size_t i = 0; i < elements.size(); ++i) full += (i ? "\\" : "") + elements[i];
    if (trailingBackslash && !elements.empty()) full += "\\";
    return full;
}

bool MatchesMask(std::string_view name, std::string_view mask) {
    std::size_t n = 0;
    std::size_t m = 0;
    std::optional<std::size_t> afterJoker;
    std::size_t retryFrom = 0;
    while (n < name.size() && m < mask.size()) {
        if (mask[m] == '*') {
            while (m < mask.size() && mask[m] == '*') ++m;
            if (m == mask.size()) return true;
            afterJoker = m;
            while (n < name.size() && Upper(name[n]) != Upper(mask[m])) ++n;
            retryFrom = n;
        } else if (mask[m] == '?') {
            ++m;
            ++n;
        } else if (Upper(mask[m]) == Upper(name[n])) {
            ++m;
            ++n;
            if (m == mask.size()) {
                if (n == name.size()) return true;
                if (afterJoker) m = *afterJoker;
            }
        } else {
            if (!afterJoker) return false;
            m = *afterJoker;
            n = ++retryFrom;
        }
    }
    while (m < mask.size() && (mask[m] == '.' || mask[m] == '*')) ++m;
    return n == name.size() && m == mask.size();
}

}  // namespace tessmark::platform::memory
