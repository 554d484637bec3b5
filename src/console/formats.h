#pragma once
// The list as text: a table that fits the console, CSV (RFC 4180, with a
// header line) and JSON (one array of objects). CSV and JSON are UTF-8.
#include <string>
#include <vector>

#include "console/records.h"
#include "platform/codec_port.h"

namespace tessmark::console {

// `width` in characters; the table stays in the system's ANSI code page.
std::string TableText(const std::vector<Record>& records, bool hash, int width);
std::string CsvText(const std::vector<Record>& records, bool hash, platform::CodecPort& codec);
std::string JsonText(const std::vector<Record>& records, bool hash, platform::CodecPort& codec);

}  // namespace tessmark::console
