#pragma once
// The run-time semantics the program's logic is written in: 1-based string
// functions, blank-only trimming, "&H" literals, rounding half to even, 16-bit
// counters that overflow, arrays that can be undimensioned, and run-time errors
// as exceptions carrying their number.
//
// Text is held as std::string of system-code-page characters; NUL characters
// are ordinary characters inside it.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tessmark::vb {

// ---- run-time errors -------------------------------------------------------

namespace err {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kSubscript = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kInternal = 51;
inline constexpr int kBadFileName = 52;
inline constexpr int kFileNotFound = 53;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathFileAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kObjectNotSet = 91;
inline constexpr int kObjectRequired = 424;
inline constexpr int kCantCreateObject = 429;
inline constexpr int kNoSuchMember = 438;
}  // namespace err

class VbError : public std::runtime_error {
public:
    explicit VbError(int number);
    int number() const { return number_; }

private:
    int number_;
};

// The run-time's description of an error number ("Subscript out of range").
std::string ErrorDescription(int number);
// The text of the run-time's box for an error nothing trapped:
// "Run-time error '9':\r\n\r\nSubscript out of range".
std::string RuntimeErrorMessage(int number);

// One statement with errors ignored: a run-time error inside skips the rest of
// the statement and nothing more. Anything that is not a run-time error passes.
template <class Statement>
void Resume(Statement&& statement) {
    try {
        std::forward<Statement>(statement)();
    } catch (const VbError&) {
    }
}

// ---- text --------------------------------------------------------------------

enum class Compare { Binary, Text };

long Len(const std::string& s);
std::string Left(const std::string& s, long length);   // error 5 for a negative length
std::string Right(const std::string& s, long length);  // error 5 for a negative length
std::string Mid(const std::string& s, long start);      // error 5 for start < 1
std::string Mid(const std::string& s, long start, long length);
// First occurrence at or after start (1-based); 0 when there is none.
long InStr(const std::string& s, const std::string& find, Compare compare = Compare::Binary);
long InStr(long start, const std::string& s, const std::string& find,
           Compare compare = Compare::Binary);
// Last occurrence that starts at or before start (-1: the end); 0 when there is none.
long InStrRev(const std::string& s, const std::string& find, long start = -1,
              Compare compare = Compare::Binary);
std::string Replace(const std::string& s, const std::string& find, const std::string& with,
                    long start = 1, long count = -1, Compare compare = Compare::Binary);
std::string Trim(const std::string& s);   // blanks only, never NULs or tabs
std::string LTrim(const std::string& s);
std::string RTrim(const std::string& s);
std::string UCase(const std::string& s);
std::string LCase(const std::string& s);
std::string Space(long count);
std::string String(long count, char ch);
std::string StrReverse(const std::string& s);
std::string Chr(long code);  // error 5 outside 0..255
int Asc(const std::string& s);  // error 5 for empty text
bool TextEquals(const std::string& a, const std::string& b);  // Option Compare Text equality
// Split(s, delimiter): the pieces between delimiters; empty text gives no piece at all.
std::vector<std::string> Split(const std::string& s, const std::string& delimiter);

// ---- numbers -----------------------------------------------------------------

// Hex of a 32-bit value: negatives as their two's complement.
std::string Hex(std::int32_t value);
// Format(value, "00") and the like: at least `digits` digits, zero-padded.
std::string FormatDigits(long value, int digits);
// Str-like decimal text without the leading blank ("12", "-3").
std::string CStr(long value);

// Val: leading number of a text; "&H" and "&O" literals stop at the first
// character that is no digit of their base. Hex literals of up to 16 bits
// give a 16-bit value, as the literal would (Val("&HFFFF") is -1).
double Val(const std::string& s);

// Conversions round half to even and raise error 6 out of range.
std::int16_t CInt(double value);
std::int32_t CLng(double value);
double RoundHalfEven(double value);

// A 16-bit signed counter: arithmetic past its range raises error 6.
class Integer {
public:
    constexpr Integer(std::int16_t value = 0) : value_(value) {}
    constexpr operator std::int16_t() const { return value_; }
    Integer& operator+=(long delta);
    Integer& operator-=(long delta) { return *this += -delta; }
    Integer& operator++() { return *this += 1; }
    std::int16_t value() const { return value_; }

private:
    std::int16_t value_;
};

// ---- dynamic arrays ---------------------------------------------------------

// A dynamic array with lower bound 0 that starts undimensioned: UBound, LBound
// and element access raise error 9 until ReDim gives it elements.
template <class T>
class Array {
public:
    bool IsDimensioned() const { return dimensioned_; }
    long UBound() const {
        if (!dimensioned_) throw VbError(err::kSubscript);
        return static_cast<long>(items_.size()) - 1;
    }
    long LBound() const {
        if (!dimensioned_) throw VbError(err::kSubscript);
        return 0;
    }
    // ReDim a(upper): fresh elements; ReDim Preserve a(upper): keeps what fits.
    void ReDim(long upper) {
        if (upper < -1) throw VbError(err::kSubscript);
        items_.assign(static_cast<std::size_t>(upper + 1), T{});
        dimensioned_ = true;
    }
    void ReDimPreserve(long upper) {
        if (upper < -1) throw VbError(err::kSubscript);
        items_.resize(static_cast<std::size_t>(upper + 1));
        dimensioned_ = true;
    }
    void Erase() {
        items_.clear();
        dimensioned_ = false;
    }
    T& operator[](long index) { return items_.at(checked(index)); }
    const T& operator[](long index) const { return items_.at(checked(index)); }
    const std::vector<T>& items() const { return items_; }

private:
    std::size_t checked(long index) const {
        if (!dimensioned_ || index < 0 || index >= static_cast<long>(items_.size()))
            throw VbError(err::kSubscript);
        return static_cast<std::size_t>(index);
    }
    std::vector<T> items_;
    bool dimensioned_ = false;
};

}  // namespace tessmark::vb
