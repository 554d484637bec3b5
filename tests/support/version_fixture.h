#pragma once
// The version resource that the Wine test program carries (version_fixture.rc)
// and that the memory machine attaches to its versioned file. Two string
// tables: German without a company name, then English with one.
#define FIXTURE_FILE_VERSION 1, 2, 0, 3
#define FIXTURE_PRODUCT_VERSION 5, 1, 2600, 0
#define FIXTURE_FILE_FLAGS 0x3L
#define FIXTURE_FILE_OS 0x40004L
#define FIXTURE_FILE_TYPE 0x1L
#define FIXTURE_COMPANY_NAME "Tessmark Test Works"
#define FIXTURE_DESCRIPTION_GERMAN "Konformitaetspruefung"
#define FIXTURE_DESCRIPTION_ENGLISH "Conformance test program"
#define FIXTURE_FILE_VERSION_TEXT "1.2.0.3"
#define FIXTURE_CODE_PAGE 1252

#ifndef RC_INVOKED
#include <cstdint>

namespace tessmark::testing::fixture {

inline constexpr std::uint16_t kFileVersion[] = {FIXTURE_FILE_VERSION};
inline constexpr std::uint16_t kProductVersion[] = {FIXTURE_PRODUCT_VERSION};
inline constexpr std::uint16_t kGerman = 0x0407;
inline constexpr std::uint16_t kEnglish = 0x0409;
inline constexpr const char* kGermanTable = "040704E4";
inline constexpr const char* kEnglishTable = "040904E4";

}  // namespace tessmark::testing::fixture
#endif
