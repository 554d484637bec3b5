#pragma once
// Switching one start-up item off and on again. A disabled registry item lies
// in a subkey "AutorunsDisabled" beneath its own key, a disabled Startup-folder
// item is a line in "Settings.ini"; nothing goes to a store of our own. The
// operations take a section text, a name, a path and a number and know nothing
// of the list. They show no message, trap nothing and look at no outcome: the
// target is written first and the source deleted regardless.
#include <cstdint>
#include <memory>
#include <string>

#include "discovery/ScanContext.h"
#include "registry/AdvRegistryAccess.h"

namespace tessmark::operations {

class ItemOperations {
public:
    explicit ItemOperations(discovery::ScanContext& form) : form_(form) {}

    // ItemValue is read only for "Registry\All Users\Drivers". Every call, for
    // any section text, ends with a line to the activity log, unless deleting a
    // shortcut raised an error first.
    void MarkDisable(const std::string& SectionName, const std::string& ItemName, const std::string& ItemPath,
                     std::int32_t ItemValue);
    // Takes ItemName out of the list value LogonFolder of HKLM\PPath and adds it
    // to the same value of PPath\AutorunsDisabled.
    void DisableLogon(const std::string& PPath, const std::string& ItemName, const std::string& LogonFolder);
    // Moves the first-level subkeys of a browser helper object's key, as text
    // values, into the disabled subtree.
    void DisableBHO(const std::string& PPath);

    // The mirror of MarkDisable, with its own deliberate differences: no log
    // line, a service always comes back as automatic, and a Startup item's
    // settings line stays unless it still names ItemPath.
    void MarkEnable(const std::string& SectionName, const std::string& ItemName, const std::string& ItemPath,
                    std::int32_t ItemValue);
    void EnableLogon(const std::string& PPath, const std::string& ItemName, const std::string& LogonFolder);
    // Takes ItemName out of the live list only, keeping a comma that follows
    // it; the list is written back even when emptied or when it was missing.
    void DeleteLogon(const std::string& PPath, const std::string& ItemName, const std::string& LogonFolder);
    void EnableBHO(const std::string& PPath);

    // Saves a shortcut named after ShortcutPath plus ".lnk" that points at
    // TargetPath; a failure of the shell raises an error.
    void CreateShortcut(std::string ShortcutPath, const std::string& TargetPath, std::string Item_Name);

    // Deletes every plain file of the folder whose shortcut target is
    // `target`, whatever it is called; a file that can't go raises an error.
    void KillShortcutsTo(const std::string& folder, const std::string& target);

    registry::AdvRegistryAccess& objReg();  // the form's one object, made at first use

private:
    discovery::ScanContext& form_;
    std::unique_ptr<registry::AdvRegistryAccess> objReg_;
};

// The start type a driver carries in front of the first comma of its Key
// ("Zero" to "Three", anything else 0); a Key without a comma raises an error.
std::int32_t StartTypeWord(const std::string& key);

}  // namespace tessmark::operations
