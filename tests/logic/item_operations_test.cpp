// Disabling and enabling items, section by section: what leaves each place,
// what is left behind, and the deliberate differences between the two ways.
#include <gtest/gtest.h>

#include "item_places.h"
#include "operations/ItemOperations.h"
#include "platform/memory/memory_disk.h"
#include "scan_fixture.h"

using namespace tessmark;
using tessmark::testing::ItemPlaces;
using tessmark::testing::StoredValue;
using platform::reg::kSz;

namespace {

constexpr const char* kNotepad = "C:\\windows\\notepad.exe";
constexpr const char* kRegedit = "C:\\windows\\regedit.exe";
constexpr int kAllUsersFolder = platform::kCsidlCommonStartup;
constexpr int kCurrentUserFolder = platform::kCsidlStartup;
const std::string kBase = tessmark::testing::kRunBase;
const std::string kWinlogon = tessmark::testing::kWinlogon;
const std::string kRdpwd = tessmark::testing::kRdpwd;

class ItemOperations : public tessmark::testing::ScanFixture {
protected:
    ItemPlaces places{*machine};
    operations::ItemOperations ops{form};

    std::string IniValue(const std::string& section, const std::string& name) {
        storage::IniFile reader(machine->Files());
        reader.IniFilePath(places.SettingsFile());
        reader.IniSection(section);
        return reader.IniReadValue(name);
    }
    const std::vector<std::string>& Log() { return machine->Ui().log; }
};

TEST_F(ItemOperations, RunValuesMoveToTheirDisabledSubkeyAsTextAndBack) {
    const struct {
        const char* section;
        platform::RegHandle root;
        const char* key;
    } cases[] = {
        {"Registry\\All Users\\Run", HKLM, "Run"},
        {"Registry\\All Users\\RunOnce", HKLM, "RunOnce"},
        {"Registry\\All Users\\RunServices", HKLM, "RunServices"},
        {"Registry\\All Users\\RunServicesOnce", HKLM, "RunServiceOnce"},
        {"Registry\\Current User\\Run", HKCU, "Run"},
        {"Registry\\Current User\\RunOnce", HKCU, "RunOnce"},
        {"Registry\\Current User\\RunServices", HKCU, "RunServices"},
        // Handled though nothing lists it.
        {"Registry\\Current User\\RunServicesOnce", HKCU, "RunServiceOnce"},
    };
    const std::string path = "C:\\windows\\notepad.exe /min";
    for (const auto& c : cases) {
        const std::string live = kBase + c.key, disabled = live + "\\AutorunsDisabled";
        const auto otherRoot = c.root == HKLM ? HKCU : HKLM;
        places.Set(c.root, live, "Tool", "%windir%\\notepad.exe", platform::reg::kExpandSz);
        places.Set(otherRoot, live, "Tool", "elsewhere");

        ops.MarkDisable(c.section, "Tool", path, 0);
        EXPECT_EQ(places.Value(c.root, live, "Tool"), std::nullopt) << c.section;
        // The old type is not kept, and the copy holds the path handed in.
        EXPECT_EQ(places.Value(c.root, disabled, "Tool"), (StoredValue{kSz, path})) << c.section;
        EXPECT_EQ(Log().back(),
                  "Tessmark - Section-" + std::string(c.section) + " ItemName-Tool ItemPath-" + path);

        const std::size_t logged = Log().size();
        for (int twice = 0; twice < 2; ++twice) {
            ops.MarkEnable(c.section, "Tool", path, 0);
            EXPECT_EQ(places.Value(c.root, live, "Tool"), (StoredValue{kSz, path})) << c.section;
            EXPECT_EQ(places.Value(c.root, disabled, "Tool"), std::nullopt) << c.section;
            EXPECT_TRUE(places.KeyExists(c.root, disabled)) << c.section << ": the emptied subkey stays";
        }
        EXPECT_EQ(Log().size(), logged) << "enabling writes no log line";
        EXPECT_EQ(places.Value(otherRoot, live, "Tool"), (StoredValue{kSz, "elsewhere"})) << c.section;
    }
}

TEST_F(ItemOperations, UnknownSectionsChangeNothingAndOnlyDisablingLogsThem) {
    // Section texts compare exactly, case included.
    for (const char* section : {"Registry\\All Users\\run", "registry\\all users\\Run", "Registry\\Somewhere", ""}) {
        places.Set(HKLM, kBase + "Run", "Tool", kNotepad);
        places.Set(HKLM, kBase + "Run\\AutorunsDisabled", "Tool", kRegedit);
        ops.MarkDisable(section, "Tool", kNotepad, 0);
        EXPECT_EQ(Log().back(), "Tessmark - Section-" + std::string(section) + " ItemName-Tool ItemPath-" + kNotepad);
        const std::size_t logged = Log().size();
        ops.MarkEnable(section, "Tool", kNotepad, 0);
        EXPECT_EQ(Log().size(), logged);
        EXPECT_EQ(places.Value(HKLM, kBase + "Run", "Tool"), (StoredValue{kSz, kNotepad})) << section;
        EXPECT_EQ(places.Value(HKLM, kBase + "Run\\AutorunsDisabled", "Tool"), (StoredValue{kSz, kRegedit}))
            << section;
    }
}

// ---- lists of programs in one logon value

struct ListCase {
    const char* before;
    const char* member;
    const char* logonFolder;
    std::optional<std::string> after;  // nothing: the value (or key) is gone
};

std::string KeyOf(const std::string& logonFolder) { return logonFolder == "StartupPrograms" ? kRdpwd : kWinlogon; }

TEST_F(ItemOperations, DisablingTakesTheMemberOutOfTheLiveList) {
    const ListCase cases[] = {
        {"A,B,C", "B", "Userinit", "A,C"},
        {"A, B, C", "B", "Userinit", "A, C"},
        {"B,C", "B", "Userinit", "C"},
        {"A,B", "B", "Userinit", "A"},
        {"B", "B", "Userinit", std::nullopt},
        // A one-member value with its usual trailing comma goes as well.
        {"B,", "B", "Userinit", std::nullopt},
        {"A B", "B", "Shell", "A"},
        {"A,B,C", "B", "StartupPrograms", "A,C"},
        {"A,B,C", "C", "Userinit", "A,B"},
        {"\"A\",B  ", "B", "Userinit", "A"},
        // The first occurrence counts, also inside another member.
        {"C:\\app\\x.exe,app", "app", "Userinit", "C:,x.exe,app"},
        // A member that is not there costs the list its first Len + 1 characters.
        {"alpha,beta", "zz", "Userinit", "ha,beta"},
        {"ab", "zz", "Shell", std::nullopt},
    };
    for (const auto& c : cases) {
        const std::string key = KeyOf(c.logonFolder);
        tessmark::testing::DeleteTree(machine->Registry(), HKLM, key + "\\AutorunsDisabled");
        places.Set(HKLM, key, c.logonFolder, c.before);
        places.Set(HKLM, key, "Other", "stays");

        ops.DisableLogon(key, c.member, c.logonFolder);
        auto after = places.Value(HKLM, key, c.logonFolder);
        if (c.after) EXPECT_EQ(after, (StoredValue{kSz, *c.after})) << c.before << " less " << c.member;
        else EXPECT_EQ(after, std::nullopt) << c.before << " less " << c.member;
        EXPECT_EQ(places.Value(HKLM, key, "Other"), (StoredValue{kSz, "stays"}));
        EXPECT_EQ(places.Value(HKLM, key + "\\AutorunsDisabled", c.logonFolder), (StoredValue{kSz, c.member}))
            << c.before;
    }
}

TEST_F(ItemOperations, DeletingTakesTheMemberOutOfTheLiveListOnly) {
    const ListCase cases[] = {
        {"A, B, C", "B", "Userinit", "A,, C"},  // the comma behind the member stays
        {"B", "B", "Userinit", ""},             // emptied, and still there
        {"", "B", "Shell", ""},                 // missing, and created
        {"A B", "B", "Shell", "A"},
    };
    for (const auto& c : cases) {
        const std::string key = KeyOf(c.logonFolder);
        tessmark::testing::DeleteTree(machine->Registry(), HKLM, key + "\\AutorunsDisabled");
        if (*c.before) places.Set(HKLM, key, c.logonFolder, c.before);
        ops.DeleteLogon(key, c.member, c.logonFolder);
        EXPECT_EQ(places.Value(HKLM, key, c.logonFolder), (StoredValue{kSz, *c.after})) << c.before;
        EXPECT_FALSE(places.KeyExists(HKLM, key + "\\AutorunsDisabled")) << c.before;
    }
}

TEST_F(ItemOperations, DisabledListsGrowWithTheirOwnSeparator) {
    const struct {
        const char* logonFolder;
        const char* disabledBefore;
        const char* disabledAfter;
    } cases[] = {
        {"Userinit", "X", "X,B"},      {"Userinit", "X,", "X,B"},   {"Userinit", "X, ", "X,B"},
        {"StartupPrograms", "X", "X,B"}, {"Shell", "X", "X B"},     {"Shell", "X,", "X, B"},
        {"Shell", "X ", "X B"},
    };
    for (const auto& c : cases) {
        const std::string key = KeyOf(c.logonFolder);
        places.Set(HKLM, key + "\\AutorunsDisabled", c.logonFolder, c.disabledBefore);
        places.Set(HKLM, key, c.logonFolder, "A,B");
        ops.DisableLogon(key, "B", c.logonFolder);
        EXPECT_EQ(places.Value(HKLM, key + "\\AutorunsDisabled", c.logonFolder), (StoredValue{kSz, c.disabledAfter}))
            << c.logonFolder << " after \"" << c.disabledBefore << "\"";
    }
}

TEST_F(ItemOperations, EnablingTakesTheMemberOutOfTheDisabledListWithItsOwnRules) {
    const ListCase cases[] = {
        {"A,B,C", "B", "Userinit", "A,C"},
        {"B,C", "B", "Userinit", "C"},
        {"A B", "B", "Shell", "A"},
        // The last member leaves only the first character of what stood before it.
        {"A,B,C", "C", "Userinit", "A"},
        {"first,second", "second", "StartupPrograms", "f"},
        {"alpha,beta", "zz", "Userinit", "ha,beta"},
        // The emptied list takes its whole key with it.
        {"B", "B", "Userinit", std::nullopt},
        {"B,", "B", "StartupPrograms", std::nullopt},
    };
    for (const auto& c : cases) {
        const std::string key = KeyOf(c.logonFolder), disabled = key + "\\AutorunsDisabled";
        places.Set(HKLM, disabled, c.logonFolder, c.before);
        places.Set(HKLM, key, c.logonFolder, "L");

        ops.EnableLogon(key, c.member, c.logonFolder);
        const std::string separator = std::string(c.logonFolder) == "Shell" ? " " : ",";
        EXPECT_EQ(places.Value(HKLM, key, c.logonFolder), (StoredValue{kSz, "L" + separator + c.member})) << c.before;
        if (c.after) {
            EXPECT_EQ(places.Value(HKLM, disabled, c.logonFolder), (StoredValue{kSz, *c.after}))
                << c.before << " less " << c.member;
        } else {
            EXPECT_FALSE(places.KeyExists(HKLM, disabled)) << c.before << " less " << c.member;
        }
    }
}

TEST_F(ItemOperations, EnablingTheLastDisabledShellMemberAlsoDropsTheDisabledUserinitList) {
    places.Set(HKLM, kWinlogon + "\\AutorunsDisabled", "Shell", "explorer.exe");
    places.Set(HKLM, kWinlogon + "\\AutorunsDisabled", "Userinit", "userinit.exe");
    ops.EnableLogon(kWinlogon, "explorer.exe", "Shell");
    EXPECT_EQ(places.Value(HKLM, kWinlogon, "Shell"), (StoredValue{kSz, "explorer.exe"}));
    EXPECT_FALSE(places.KeyExists(HKLM, kWinlogon + "\\AutorunsDisabled"));
}

// ---- Startup folders

TEST_F(ItemOperations, DisablingRemovesEveryShortcutToTheTargetAndRemembersTheItem) {
    const struct {
        const char* section;
        int csidl;
        const char* settingsSection;
    } folders[] = {
        {"All Users\\Startup", kAllUsersFolder, "StartupAllUser"},
        {"Current User\\Startup", kCurrentUserFolder, "StartupCurrUser"},
    };
    for (const auto& c : folders) {
        const int other = c.csidl == kAllUsersFolder ? kCurrentUserFolder : kAllUsersFolder;
        places.Shortcut(c.csidl, "Editor.lnk", kNotepad);
        places.Shortcut(c.csidl, "Another name.lnk", kNotepad);
        places.Shortcut(c.csidl, "Registry.lnk", kRegedit);
        places.Shortcut(other, "Editor.lnk", kNotepad);
        ASSERT_TRUE(machine->Files().WriteWholeFile(places.StartupFolder(c.csidl) + "\\notes.txt", "x"));
        places.IniLine(c.settingsSection, "Notepad", "C:\\old.exe");  // replaced

        ops.MarkDisable(c.section, "Notepad", kNotepad, 0);
        EXPECT_EQ(places.NewFolderFiles(c.csidl), (std::vector<std::string>{"Registry.lnk", "notes.txt"}))
            << c.section;
        EXPECT_EQ(places.NewFolderFiles(other), std::vector<std::string>{"Editor.lnk"}) << c.section;
        EXPECT_EQ(IniValue(c.settingsSection, "Notepad"), kNotepad) << c.section;
        EXPECT_EQ(Log().back(), "Tessmark - Section-" + std::string(c.section) +
                                    " ItemName-Notepad ItemPath-C:\\windows\\notepad.exe");
        places.RemoveNewFolderFiles();
    }
}

TEST_F(ItemOperations, AnItemWhosePathWasLostIsRememberedButItsFileStays) {
    // A file that is no shortcut shows "File Not Found" as its path, the target of no file.
    ASSERT_TRUE(machine->Files().WriteWholeFile(places.StartupFolder(kAllUsersFolder) + "\\junk.lnk", "no shortcut"));
    ops.MarkDisable("All Users\\Startup", "junk", "File Not Found", 0);
    EXPECT_EQ(places.NewFolderFiles(kAllUsersFolder), std::vector<std::string>{"junk.lnk"});
    EXPECT_EQ(IniValue("StartupAllUser", "junk"), "File Not Found");
}

TEST_F(ItemOperations, AShortcutThatCannotBeDeletedStopsDisablingBeforeTheLogLine) {
    places.Shortcut(kCurrentUserFolder, "Locked.lnk", kNotepad);
    machine->AddFileAttributes(places.StartupFolder(kCurrentUserFolder) + "\\Locked.lnk", platform::kAttrReadOnly);
    EXPECT_THROW(ops.MarkDisable("Current User\\Startup", "Locked", kNotepad, 0), vb::VbError);
    EXPECT_TRUE(Log().empty());
    // The line was written first, so the item now counts as enabled and disabled.
    EXPECT_EQ(IniValue("StartupCurrUser", "Locked"), kNotepad);
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder), std::vector<std::string>{"Locked.lnk"});
}

TEST_F(ItemOperations, EnablingMakesOneShortcutNamedAfterTheItemAndForgetsOnlyItsLine) {
    places.IniLine("StartupCurrUser", "notepad.exe", kNotepad);
    places.IniLine("StartupCurrUser", "Other", kRegedit);
    ops.MarkEnable("Current User\\Startup", "notepad.exe", kNotepad, 0);
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder), std::vector<std::string>{"notepad.exe.lnk"});
    EXPECT_EQ(places.Target(kCurrentUserFolder, "notepad.exe.lnk"), kNotepad);
    EXPECT_EQ(IniValue("StartupCurrUser", "notepad.exe"), "");
    EXPECT_EQ(IniValue("StartupCurrUser", "Other"), kRegedit);
    EXPECT_TRUE(Log().empty());
    // Only the memory shell lets the icon location be read back.
    if (auto* disk = dynamic_cast<platform::memory::MemoryDisk*>(&machine->Shell())) {
        auto shortcut = disk->ReadShortcut(places.StartupFolder(kCurrentUserFolder) + "\\notepad.exe.lnk");
        ASSERT_TRUE(shortcut);
        EXPECT_EQ(shortcut->iconFile, "notepad.exe.exe");
        EXPECT_EQ(shortcut->iconIndex, 0);
        EXPECT_EQ(shortcut->windowStyle, 1);
    }
}

TEST_F(ItemOperations, EnablingKeepsALineThatNamesAnotherPath) {
    places.IniLine("StartupAllUser", "Tool", kRegedit);
    places.Shortcut(kAllUsersFolder, "Tool.lnk", kRegedit);
    // The row's path had become "File Not Found": that is the new target, and the
    // existing shortcut of that name is overwritten.
    ops.MarkEnable("All Users\\Startup", "Tool", "File Not Found", 0);
    char full[261] = {};
    machine->Files().GetFullPathNameA("File Not Found", sizeof full, full);
    EXPECT_EQ(places.Target(kAllUsersFolder, "Tool.lnk"), full);
    EXPECT_EQ(IniValue("StartupAllUser", "Tool"), kRegedit);
}

TEST_F(ItemOperations, AShortcutThatCannotBeSavedStopsEnablingBeforeTheLineGoes) {
    places.IniLine("StartupCurrUser", "Missing\\Tool", kNotepad);
    EXPECT_THROW(ops.MarkEnable("Current User\\Startup", "Missing\\Tool", kNotepad, 0), vb::VbError);
    EXPECT_EQ(IniValue("StartupCurrUser", "Missing\\Tool"), kNotepad);
}

TEST_F(ItemOperations, ShortcutNamesAlwaysGetLnkAddedAndVeryShortNamesFail) {
    const std::string folder = places.StartupFolder(kCurrentUserFolder);
    for (const char* name : {"notepad.exe", "ab", "Tool.lnk"}) ops.CreateShortcut(folder + "\\" + name, kNotepad, name);
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder),
              (std::vector<std::string>{"Tool.lnk.lnk", "ab.lnk", "notepad.exe.lnk"}));
    try {
        ops.CreateShortcut("abcd", kNotepad, "x");
        ADD_FAILURE() << "a four-character path has no slice to test";
    } catch (const vb::VbError& error) {
        EXPECT_EQ(error.number(), vb::err::kInvalidCall);
    }
}

// ---- services, drivers and browser helpers, which nothing lists

TEST_F(ItemOperations, ServicesComeBackAutomaticDriversWithTheNumberHandedIn) {
    const std::string key = tessmark::testing::kServiceKey;
    const struct {
        const char* section;
        std::int32_t disableValue;
        std::uint32_t mark;
        std::int32_t enableValue;
        std::uint32_t startAfterEnable;
    } cases[] = {
        {"Registry\\All Users\\Services", 3, 1, 3, 2},
        {"Registry\\All Users\\Drivers", 3, 3, 1, 1},
        {"Registry\\All Users\\Drivers", 3, 3, 0, 0},
    };
    for (const auto& c : cases) {
        places.SetDword(HKLM, key, "Start", 3);
        ops.MarkDisable(c.section, "TessmarkTestService", "", c.disableValue);
        EXPECT_EQ(places.Dword(HKLM, key, "Start"), 4u) << c.section;
        EXPECT_EQ(places.Dword(HKLM, key, "AutorunsDisabled"), c.mark) << c.section;
        ops.MarkEnable(c.section, "TessmarkTestService", "", c.enableValue);
        EXPECT_EQ(places.Dword(HKLM, key, "Start"), c.startAfterEnable) << c.section;
        EXPECT_EQ(places.Value(HKLM, key, "AutorunsDisabled"), std::nullopt) << c.section;
    }
}

class BrowserHelpers : public ItemOperations {
protected:
    const std::string clsid = tessmark::testing::kTestClsid;
    const std::string live = tessmark::testing::kBhoBase + clsid;
    const std::string disabled = std::string(tessmark::testing::kBhoBase) + "AutorunsDisabled\\" + clsid;
    static constexpr const char* kSection = "Registry\\All Users\\Browser Helper Objects";
};

TEST_F(BrowserHelpers, FirstLevelSubkeysTravelAsPaddedTextAndTheClassKeysOwnValuesAreLost) {
    places.Set(HKLM, live, "Own", "lost");
    places.Set(HKLM, live + "\\Settings", "Name", "helper");
    places.SetDword(HKLM, live + "\\Settings", "Flags", 0x41);
    places.Set(HKLM, live + "\\Other", "Path", kNotepad);

    ops.MarkDisable(kSection, "Helper", clsid, 0);
    EXPECT_FALSE(places.KeyExists(HKLM, live));
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Settings", "Name"), (StoredValue{kSz, "helper"}));
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Settings", "Flags"), (StoredValue{kSz, "A"}));
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Other", "Path"), (StoredValue{kSz, kNotepad}));
    EXPECT_EQ(places.Value(HKLM, disabled, "Own"), std::nullopt);

    ops.MarkEnable(kSection, "Helper", clsid, 0);
    EXPECT_FALSE(places.KeyExists(HKLM, disabled));
    EXPECT_TRUE(places.KeyExists(HKLM, std::string(tessmark::testing::kBhoBase) + "AutorunsDisabled"));
    // The copies hold the whole 1024-character read, too long for the name
    // enumeration's data buffer: on the way back every value comes out
    // nameless and lands in the subkey's default value.
    for (const char* sub : {"\\Settings", "\\Other"}) {
        EXPECT_EQ(places.Value(HKLM, live + sub, ""), (StoredValue{kSz, ""})) << sub;
        EXPECT_EQ(places.Value(HKLM, live + sub, "Name"), std::nullopt) << sub;
        EXPECT_EQ(places.Value(HKLM, live + sub, "Path"), std::nullopt) << sub;
    }
}

TEST_F(BrowserHelpers, ASubkeyWithSubkeysOfItsOwnStaysBehindWithItsParent) {
    places.Set(HKLM, live + "\\Deep", "Name", "deep");
    places.MakeKey(HKLM, live + "\\Deep\\Deeper");
    ops.DisableBHO(clsid);
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Deep", "Name"), (StoredValue{kSz, "deep"}));
    EXPECT_FALSE(places.KeyExists(HKLM, disabled + "\\Deep\\Deeper"));
    EXPECT_TRUE(places.KeyExists(HKLM, live + "\\Deep\\Deeper"));
}

TEST_F(BrowserHelpers, WithoutSubkeysAnEmptyKeyIsMadeOnTheOtherSide) {
    places.Set(HKLM, live, "Own", "lost");
    ops.MarkDisable(kSection, "Helper", clsid, 0);
    EXPECT_FALSE(places.KeyExists(HKLM, live));
    EXPECT_TRUE(places.KeyExists(HKLM, disabled));

    places.Set(HKLM, disabled, "Own", "lost again");
    ops.MarkEnable(kSection, "Helper", clsid, 0);
    EXPECT_FALSE(places.KeyExists(HKLM, disabled));
    EXPECT_TRUE(places.KeyExists(HKLM, live));
    EXPECT_EQ(places.Value(HKLM, live, "Own"), std::nullopt);
}

}  // namespace
