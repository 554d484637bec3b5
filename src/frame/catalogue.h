#pragma once
// The frame reads the section catalogue under its own namespace.
#include "catalogue/sections.h"

namespace tessmark::frame {
using namespace ::tessmark::catalogue;
}  // namespace tessmark::frame
