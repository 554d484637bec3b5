#include "vb/vb.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <limits>

namespace tessmark::vb {

// ---- run-time errors -------------------------------------------------------

VbError::VbError(int number) : std::runtime_error(ErrorDescription(number)), number_(number) {}

std::string ErrorDescription(int number) {
    switch (number) {
    case err::kInvalidCall: return "Invalid procedure call or argument";
    case err::kOverflow: return "Overflow";
    case err::kOutOfMemory: return "Out of memory";
    case err::kSubscript: return "Subscript out of range";
    case err::kDivisionByZero: return "Division by zero";
    case err::kTypeMismatch: return "Type mismatch";
    case err::kInternal: return "Internal error";
    case err::kBadFileName: return "Bad file name or number";
    case err::kFileNotFound: return "File not found";
    case err::kPermissionDenied: return "Permission denied";
    case err::kPathFileAccess: return "Path/File access error";
    case err::kPathNotFound: return "Path not found";
    case err::kObjectNotSet: return "Object variable or With block variable not set";
    case err::kObjectRequired: return "Object required";
    case err::kNoSuchMember: return "Object doesn't support this property or method";
    case err::kCantCreateObject: return "ActiveX component can't create object";
    default: return "Application-defined or object-defined error";
    }
}

std::string RuntimeErrorMessage(int number) {
    return "Run-time error '" + std::to_string(number) + "':\r\n\r\n" + ErrorDescription(number);
}

// ---- text --------------------------------------------------------------------

namespace {

char Upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }
char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool SameAt(const std::string& s, std::size_t at, const std::string& find, Compare compare) {
    if (at + find.size() > s.size()) return false;
    for (std::size_t i = 0; i < find.size(); ++i) {
        char a = s[at + i], b = find[i];
        if (compare == Compare::Text ? Upper(a) != Upper(b) : a != b) return false;
    }
    return true;
}

}  // namespace

long Len(const std::string& s) { return static_cast<long>(s.size()); }

std::string Left(const std::string& s, long length) {
    if (length < 0) throw VbError(err::kInvalidCall);
    return s.substr(0, static_cast<std::size_t>(std::min<long>(length, Len(s))));
}

std::string Right(const std::string& s, long length) {
    if (length < 0) throw VbError(err::kInvalidCall);
    long n = std::min<long>(length, Len(s));
    return s.substr(s.size() - static_cast<std::size_t>(n));
}

std::string Mid(const std::string& s, long start) {
    if (start < 1) throw VbError(err::kInvalidCall);
    if (start > Len(s)) return {};
    return s.substr(static_cast<std::size_t>(start - 1));
}

std::string Mid(const std::string& s, long start, long length) {
    if (start < 1 || length < 0) throw VbError(err::kInvalidCall);
    if (start > Len(s)) return {};
    return s.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length));
}

long InStr(const std::string& s, const std::string& find, Compare compare) {
    return InStr(1, s, find, compare);
}

long InStr(long start, const std::string& s, const std::string& find, Compare compare) {
    if (start < 1) throw VbError(err::kInvalidCall);
    if (start > Len(s)) return 0;
    if (find.empty()) return start;
    for (std::size_t at = static_cast<std::size_t>(start - 1); at + find.size() <= s.size(); ++at)
        if (SameAt(s, at, find, compare)) return static_cast<long>(at) + 1;
    return 0;
}

long InStrRev(const std::string& s, const std::string& find, long start, Compare compare) {
    if (start == 0 || start < -1) throw VbError(err::kInvalidCall);
    if (start == -1) start = Len(s);
    if (start > Len(s)) return 0;
    if (find.empty()) return start;
    // The match must end at or before position `start`.
    long last = start - Len(find) + 1;
    for (long at = last; at >= 1; --at)
        if (SameAt(s, static_cast<std::size_t>(at - 1), find, compare)) return at;
    return 0;
}

std::string Replace(const std::string& s, const std::string& find, const std::string& with,
                    long start, long count, Compare compare) {
    if (start < 1 || count < -1) throw VbError(err::kInvalidCall);
    if (start > Len(s)) return {};
    std::string rest = s.substr(static_cast<std::size_t>(start - 1));
    if (find.empty() || count == 0) return rest;
    std::string out;
    std::size_t at = 0;
    long done = 0;
    while (at < rest.size()) {
        if ((count == -1 || done < count) && SameAt(rest, at, find, compare)) {
            out += with;
            at += find.size();
            ++done;
        } else {
            out += rest[at++];
        }
    }
    return out;
}

std::string LTrim(const std::string& s) {
    std::size_t first = s.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : s.substr(first);
}

std::string RTrim(const std::string& s) {
    std::size_t last = s.find_last_not_of(' ');
    return last == std::string::npos ? std::string() : s.substr(0, last + 1);
}

std::string Trim(const std::string& s) { return LTrim(RTrim(s)); }

std::string UCase(const std::string& s) {
    std::string out = s;
    std::transform(out.begin(), out.end(), out.begin(), Upper);
    return out;
}

std::string LCase(const std::string& s) {
    std::string out = s;
    std::transform(out.begin(), out.end(), out.begin(), Lower);
    return out;
}

std::string Space(long count) {
    if (count < 0) throw VbError(err::kInvalidCall);
    return std::string(static_cast<std::size_t>(count), ' ');
}

std::string String(long count, char ch) {
    if (count < 0) throw VbError(err::kInvalidCall);
    return std::string(static_cast<std::size_t>(count), ch);
}

std::string StrReverse(const std::string& s) { return std::string(s.rbegin(), s.rend()); }

std::string Chr(long code) {
    if (code < 0 || code > 255) throw VbError(err::kInvalidCall);
    return std::string(1, static_cast<char>(static_cast<unsigned char>(code)));
}

int Asc(const std::string& s) {
    if (s.empty()) throw VbError(err::kInvalidCall);
    return static_cast<unsigned char>(s[0]);
}

bool TextEquals(const std::string& a, const std::string& b) {
    return a.size() == b.size() && SameAt(a, 0, b, Compare::Text);
}

// ---- numbers -----------------------------------------------------------------

std::string Hex(std::int32_t value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%X", static_cast<std::uint32_t>(value));
    return buffer;
}

std::vector<std::string> Split(const std::string& s, const std::string& delimiter) {
    std::vector<std::string> pieces;
    if (s.empty()) return pieces;
    if (delimiter.empty()) return {s};
    std::size_t from = 0;
    for (std::size_t at; (at = s.find(delimiter, from)) != std::string::npos; from = at + delimiter.size())
        pieces.push_back(s.substr(from, at - from));
    pieces.push_back(s.substr(from));
    return pieces;
}

std::string FormatDigits(long value, int digits) {
    std::string text = std::to_string(value < 0 ? -static_cast<long long>(value) : value);
    if (static_cast<int>(text.size()) < digits) text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
    return value < 0 ? "-" + text : text;
}

std::string CStr(long value) { return std::to_string(value); }

double Val(const std::string& s) {
    // Val passes over blanks, tabs and line feeds wherever they stand.
    std::string t;
    for (char c : s)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') t += c;
    if (t.size() >= 2 && t[0] == '&' && (t[1] == 'H' || t[1] == 'h' || t[1] == 'O' || t[1] == 'o')) {
        bool hex = t[1] == 'H' || t[1] == 'h';
        unsigned long long value = 0;
        std::size_t digits = 0;
        for (std::size_t i = 2; i < t.size(); ++i) {
            char c = Upper(t[i]);
            int d;
            if (c >= '0' && c <= '9') d = c - '0';
            else if (hex && c >= 'A' && c <= 'F') d = c - 'A' + 10;
            else break;
            if (!hex && d > 7) break;
            value = value * (hex ? 16 : 8) + static_cast<unsigned>(d);
            if (value > 0xFFFFFFFFull) throw VbError(err::kOverflow);
            ++digits;
        }
        if (digits == 0) return 0;
        if (value <= 0xFFFF) return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
    }
    std::size_t i = 0;
    std::string number;
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) number += t[i++];
    bool any = false;
    while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i]))) { number += t[i++]; any = true; }
    if (i < t.size() && t[i] == '.') {
        number += t[i++];
        while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i]))) { number += t[i++]; any = true; }
    }
    if (!any) return 0;
    if (i < t.size() && (Upper(t[i]) == 'E' || Upper(t[i]) == 'D')) {
        std::size_t j = i + 1;
        std::string exponent = "e";
        if (j < t.size() && (t[j] == '+' || t[j] == '-')) exponent += t[j++];
        bool expDigits = false;
        while (j < t.size() && std::isdigit(static_cast<unsigned char>(t[j]))) { exponent += t[j++]; expDigits = true; }
        if (expDigits) number += exponent;
    }
    return std::strtod(number.c_str(), nullptr);
}

double RoundHalfEven(double value) {
    double floor = std::floor(value);
    double fraction = value - floor;
    if (fraction > 0.5) return floor + 1;
    if (fraction < 0.5) return floor;
    return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

std::int16_t CInt(double value) {
    double r = RoundHalfEven(value);
    if (!(r >= -32768 && r <= 32767)) throw VbError(err::kOverflow);
    return static_cast<std::int16_t>(r);
}

std::int32_t CLng(double value) {
    double r = RoundHalfEven(value);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) throw VbError(err::kOverflow);
    return static_cast<std::int32_t>(r);
}

Integer& Integer::operator+=(long delta) {
    long long sum = static_cast<long long>(value_) + delta;
    if (sum < std::numeric_limits<std::int16_t>::min() || sum > std::numeric_limits<std::int16_t>::max())
        throw VbError(err::kOverflow);
    value_ = static_cast<std::int16_t>(sum);
    return *this;
}

}  // namespace tessmark::vb
