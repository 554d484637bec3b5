#pragma once
// The change monitor: each pass rescans every section, compares the rows with
// the baseline, opens one notification per difference and saves a new
// baseline. It compares list texts only and never looks at the machine.
#include <functional>

#include "discovery/ScanContext.h"
#include "monitor/FrmNotify.h"
#include "monitor/MonitorRows.h"
#include "operations/ItemOperations.h"

namespace tessmark::monitor {

// The node keys of the sections whose items are plain named values of a key:
// the only ones between which a move can be undone.
bool InRunFamily(const std::string& nodeKey);

class ChangeMonitor {
    discovery::ScanContext& form_;
    std::function<void()> rescan_;

public:
    // `rescan` clears the list and fills it with every section, as the main
    // form's "all items" node does, then renews the check marks.
    ChangeMonitor(discovery::ScanContext& form, operations::ItemOperations& ops, std::function<void()> rescan)
        : form_(form), rescan_(std::move(rescan)), forms(NotifyContext{form, ops, rows}) {}

    // One pass. Raises error 9 while there is no baseline, after the list is
    // filled and logged and before anything is compared.
    void StartSearch();
    // A fresh scan of its own becomes the baseline. Counts rows with 16 bits.
    void SaveState();

    publicVar rows;
    NotifyForms forms;
};

}  // namespace tessmark::monitor
