#pragma once
// The monitor's two copies of the list: the baseline that the last completed
// pass saved, and the rows of the pass now running. Held in memory only;
// undimensioned until first written.
#include <string>

#include "vb/vb.h"

namespace tessmark::monitor {

struct MonitorRow {
    std::string Name;     // ListItem.Text
    std::string Path;     // SubItems(1)
    std::string Values;   // SubItems(2): "Yes" or "No"
    std::string Section;  // SubItems(3)
    std::string Key;      // ListItem.Key: rows have none, so always empty
};

// The module-level state of the monitor. Both arrays run from 0 to the
// number of rows they copied: the last element is blank.
struct publicVar {
    vb::Array<MonitorRow> SavedRows;
    vb::Array<MonitorRow> CurrentRows;
    bool FirstSearchDone = false;  // cleared by each pass; nothing reads it
};

}  // namespace tessmark::monitor
