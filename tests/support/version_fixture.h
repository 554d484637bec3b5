#pragma once
// The version resource that the Wine test program carries (version_fixture.rc) and that the memory machine attaches
// to its versioned file. Two string tables: German without a company name, then English with one.
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
#define FIXTURE_GERMAN 0x0407
#define FIXTURE_ENGLISH 0x0409
