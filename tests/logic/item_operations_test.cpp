// Disabling and enabling where the list's round trips do not reach: the log,
// the quirks of logon lists, Startup failures, services and browser helpers.
#include <gtest/gtest.h>

#include "item_places.h"
#include "operations/ItemOperations.h"
#include "platform/memory/memory_disk.h"
#include "scan_fixture.h"

using namespace tessmark;
using tessmark::testing::StoredValue;
using platform::reg::kSz;

namespace {

constexpr const char* kNotepad = "C:\\windows\\notepad.exe";
constexpr const char* kRegedit = "C:\\windows\\regedit.exe";
constexpr int kAllUsersFolder = platform::kCsidlCommonStartup, kCurrentUserFolder = platform::kCsidlStartup;
const std::string kBase = tessmark::testing::kRunBase;

class ItemOperations : public tessmark::testing::ScanFixture {
protected:
    tessmark::testing::ItemPlaces places{*machine};
    operations::ItemOperations ops{form};

    storage::IniFile& Ini(const std::string& section) {
        ini.IniFilePath(places.SettingsFile());
        ini.IniSection(section);
        return ini;
    }
    const std::vector<std::string>& Log() { return machine->Ui().log; }
};

TEST_F(ItemOperations, OnlyDisablingLogsAndTheCopyIsTextOfThePathHandedIn) {
    // Nothing lists this key, yet it is handled; section texts compare exactly, case included.
    const std::string live = kBase + "RunServiceOnce", disabled = live + "\\AutorunsDisabled";
    places.Set(HKCU, live, "Tool", "%windir%\\notepad.exe", platform::reg::kExpandSz);
    places.Set(HKLM, live, "Tool", "elsewhere");
    ops.MarkDisable("Registry\\Current User\\RunServicesOnce", "Tool", kNotepad, 0);
    EXPECT_EQ(places.Value(HKCU, disabled, "Tool"), (StoredValue{kSz, kNotepad}));
    EXPECT_EQ(Log().back(), "Tessmark - Section-Registry\\Current User\\RunServicesOnce ItemName-Tool ItemPath-" +
                                std::string(kNotepad));
    for (int twice = 0; twice < 2; ++twice) ops.MarkEnable("Registry\\Current User\\RunServicesOnce", "Tool", kNotepad, 0);
    EXPECT_EQ(places.Value(HKCU, live, "Tool"), (StoredValue{kSz, kNotepad}));
    EXPECT_TRUE(places.KeyExists(HKCU, disabled)) << "the emptied subkey stays";
    EXPECT_EQ(places.Value(HKLM, live, "Tool"), (StoredValue{kSz, "elsewhere"}));
    EXPECT_EQ(Log().size(), 1u);

    for (const char* section : {"Registry\\All Users\\run", "registry\\all users\\Run", ""}) {
        places.Set(HKLM, kBase + "Run", "Tool", kNotepad);
        places.Set(HKLM, kBase + "Run\\AutorunsDisabled", "Tool", kRegedit);
        ops.MarkDisable(section, "Tool", kNotepad, 0);
        EXPECT_EQ(Log().back(), "Tessmark - Section-" + std::string(section) + " ItemName-Tool ItemPath-" + kNotepad);
        ops.MarkEnable(section, "Tool", kNotepad, 0);
        EXPECT_EQ(places.Value(HKLM, kBase + "Run", "Tool"), (StoredValue{kSz, kNotepad})) << section;
        EXPECT_EQ(places.Value(HKLM, kBase + "Run\\AutorunsDisabled", "Tool"), (StoredValue{kSz, kRegedit})) << section;
    }
    EXPECT_EQ(Log().size(), 4u);
}

// ---- lists of programs in one logon value

std::string KeyOf(const std::string& logonFolder) {
    return logonFolder == "StartupPrograms" ? tessmark::testing::kRdpwd : tessmark::testing::kWinlogon;
}

TEST_F(ItemOperations, DisablingTakesTheMemberOutOfTheLiveListAndAppendsItToTheDisabledOne) {
    const struct {
        const char *before, *member, *logonFolder;
        std::optional<std::string> after;  // nothing: the value is gone
    } cases[] = {
        {"A,B,C", "B", "Userinit", "A,C"}, {"A, B, C", "B", "Userinit", "A, C"}, {"B,C", "B", "Userinit", "C"},
        {"A,B", "B", "Userinit", "A"},     {"B", "B", "Userinit", std::nullopt}, {"B,", "B", "Userinit", std::nullopt},
        {"A B", "B", "Shell", "A"},        {"A,B,C", "B", "StartupPrograms", "A,C"},
        {"\"A\",B  ", "B", "Userinit", "A"},
        // The first occurrence counts, also inside another member.
        {"C:\\app\\x.exe,app", "app", "Userinit", "C:,x.exe,app"},
        // A member that is not there costs the list its first Len + 1 characters.
        {"alpha,beta", "zz", "Userinit", "ha,beta"}, {"ab", "zz", "Shell", std::nullopt},
    };
    for (const auto& c : cases) {
        const std::string key = KeyOf(c.logonFolder);
        tessmark::testing::DeleteTree(machine->Registry(), HKLM, key + "\\AutorunsDisabled");
        places.Set(HKLM, key, c.logonFolder, c.before);
        places.Set(HKLM, key, "Other", "stays");
        ops.DisableLogon(key, c.member, c.logonFolder);
        auto after = places.Value(HKLM, key, c.logonFolder);
        EXPECT_EQ(after, c.after ? std::optional(StoredValue{kSz, *c.after}) : std::nullopt) << c.before << " less " << c.member;
        EXPECT_EQ(places.Value(HKLM, key, "Other"), (StoredValue{kSz, "stays"}));
        EXPECT_EQ(places.Value(HKLM, key + "\\AutorunsDisabled", c.logonFolder), (StoredValue{kSz, c.member})) << c.before;
    }
    const struct {
        const char *logonFolder, *disabledBefore, *disabledAfter;
    } grown[] = {{"Userinit", "X,", "X,B"}, {"Userinit", "X, ", "X,B"}, {"StartupPrograms", "X", "X,B"},
                 {"Shell", "X", "X B"},     {"Shell", "X,", "X, B"},    {"Shell", "X ", "X B"}};
    for (const auto& c : grown) {
        const std::string key = KeyOf(c.logonFolder);
        places.Set(HKLM, key + "\\AutorunsDisabled", c.logonFolder, c.disabledBefore);
        places.Set(HKLM, key, c.logonFolder, "A,B");
        ops.DisableLogon(key, "B", c.logonFolder);
        EXPECT_EQ(places.Value(HKLM, key + "\\AutorunsDisabled", c.logonFolder), (StoredValue{kSz, c.disabledAfter}))
            << c.logonFolder << " after \"" << c.disabledBefore << "\"";
    }
}

TEST_F(ItemOperations, DeletingTakesTheMemberOutOfTheLiveListOnly) {
    const struct {
        const char *before, *member, *logonFolder, *after;
    } cases[] = {
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
        EXPECT_EQ(places.Value(HKLM, key, c.logonFolder), (StoredValue{kSz, c.after})) << c.before;
        EXPECT_FALSE(places.KeyExists(HKLM, key + "\\AutorunsDisabled")) << c.before;
    }
}

TEST_F(ItemOperations, EnablingTakesTheMemberOutOfTheDisabledListWithItsOwnRules) {
    const struct {
        const char *before, *member, *logonFolder;
        std::optional<std::string> after;  // nothing: the key is gone
    } cases[] = {
        {"A,B,C", "B", "Userinit", "A,C"}, {"B,C", "B", "Userinit", "C"}, {"A B", "B", "Shell", "A"},
        // The last member leaves only the first character of what stood before it.
        {"A,B,C", "C", "Userinit", "A"},   {"first,second", "second", "StartupPrograms", "f"},
        {"alpha,beta", "zz", "Userinit", "ha,beta"},
        {"B", "B", "Userinit", std::nullopt}, {"B,", "B", "StartupPrograms", std::nullopt},
    };
    for (const auto& c : cases) {
        const std::string key = KeyOf(c.logonFolder), disabled = key + "\\AutorunsDisabled";
        places.Set(HKLM, disabled, c.logonFolder, c.before);
        places.Set(HKLM, key, c.logonFolder, "L");
        ops.EnableLogon(key, c.member, c.logonFolder);
        const std::string separator = std::string(c.logonFolder) == "Shell" ? " " : ",";
        EXPECT_EQ(places.Value(HKLM, key, c.logonFolder), (StoredValue{kSz, "L" + separator + c.member})) << c.before;
        if (c.after) EXPECT_EQ(places.Value(HKLM, disabled, c.logonFolder), (StoredValue{kSz, *c.after})) << c.before;
        else EXPECT_FALSE(places.KeyExists(HKLM, disabled)) << c.before;
    }
}

// ---- Startup folders

TEST_F(ItemOperations, DisablingAShortcutLeavesOtherTargetsFilesAndFoldersAndReplacesTheLine) {
    places.Shortcut(kCurrentUserFolder, "Editor.lnk", kNotepad);
    places.Shortcut(kCurrentUserFolder, "Registry.lnk", kRegedit);
    places.Shortcut(kAllUsersFolder, "Editor.lnk", kNotepad);
    ASSERT_TRUE(machine->Files().WriteWholeFile(places.StartupFolder(kCurrentUserFolder) + "\\notes.txt", "x"));
    Ini("StartupCurrUser").IniWriteValue("Notepad", "C:\\old.exe");
    ops.MarkDisable("Current User\\Startup", "Notepad", kNotepad, 0);
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder), (std::vector<std::string>{"Registry.lnk", "notes.txt"}));
    EXPECT_EQ(places.NewFolderFiles(kAllUsersFolder), std::vector<std::string>{"Editor.lnk"});
    EXPECT_EQ(Ini("StartupCurrUser").IniReadValue("Notepad"), kNotepad);
    EXPECT_EQ(Log().back(), "Tessmark - Section-Current User\\Startup ItemName-Notepad ItemPath-C:\\windows\\notepad.exe");
}

TEST_F(ItemOperations, AShortcutThatCannotBeDeletedOrSavedStopsTheCommandMidway) {
    places.Shortcut(kCurrentUserFolder, "Locked.lnk", kNotepad);
    machine->AddFileAttributes(places.StartupFolder(kCurrentUserFolder) + "\\Locked.lnk", platform::kAttrReadOnly);
    EXPECT_THROW(ops.MarkDisable("Current User\\Startup", "Locked", kNotepad, 0), vb::VbError);
    EXPECT_TRUE(Log().empty());
    // The line was written first, so the item now counts as enabled and disabled.
    EXPECT_EQ(Ini("StartupCurrUser").IniReadValue("Locked"), kNotepad);
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder), std::vector<std::string>{"Locked.lnk"});

    Ini("StartupCurrUser").IniWriteValue("Missing\\Tool", kNotepad);
    EXPECT_THROW(ops.MarkEnable("Current User\\Startup", "Missing\\Tool", kNotepad, 0), vb::VbError);
    EXPECT_EQ(Ini("StartupCurrUser").IniReadValue("Missing\\Tool"), kNotepad);
}

TEST_F(ItemOperations, EnablingOverwritesAShortcutOfTheSameNameAndForgetsOnlyALineThatNamesThePath) {
    Ini("StartupAllUser").IniWriteValue("Tool", kRegedit);
    Ini("StartupAllUser").IniWriteValue("Other", "File Not Found");
    places.Shortcut(kAllUsersFolder, "Tool.lnk", kRegedit);
    ops.MarkEnable("All Users\\Startup", "Tool", "File Not Found", 0);
    char full[261] = {};
    machine->Files().GetFullPathNameA("File Not Found", sizeof full, full);
    EXPECT_EQ(places.Target(kAllUsersFolder, "Tool.lnk"), full);
    EXPECT_EQ(Ini("StartupAllUser").IniReadValue("Tool"), kRegedit);
    ops.MarkEnable("All Users\\Startup", "Other", "File Not Found", 0);
    EXPECT_EQ(Ini("StartupAllUser").IniReadValue("Other"), "");
    EXPECT_EQ(Ini("StartupAllUser").IniReadValue("Tool"), kRegedit);
}

TEST_F(ItemOperations, ShortcutNamesAlwaysGetLnkAddedAndVeryShortNamesFail) {
    const std::string folder = places.StartupFolder(kCurrentUserFolder);
    for (const char* name : {"notepad.exe", "ab", "Tool.lnk"}) ops.CreateShortcut(folder + "\\" + name, kNotepad, name);
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder),
              (std::vector<std::string>{"Tool.lnk.lnk", "ab.lnk", "notepad.exe.lnk"}));
    // Only the memory shell lets the icon location be read back.
    if (auto* disk = dynamic_cast<platform::memory::MemoryDisk*>(&machine->Shell())) {
        auto shortcut = disk->ReadShortcut(folder + "\\notepad.exe.lnk");
        ASSERT_TRUE(shortcut);
        EXPECT_EQ(std::make_tuple(shortcut->iconFile, shortcut->iconIndex, shortcut->windowStyle),
                  std::make_tuple(std::string("notepad.exe.exe"), 0, 1));
    }
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
    } cases[] = {{"Registry\\All Users\\Services", 3, 1, 3, 2},
                 {"Registry\\All Users\\Drivers", 3, 3, 1, 1},
                 {"Registry\\All Users\\Drivers", 3, 3, 0, 0}};
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

TEST_F(ItemOperations, BrowserHelperSubkeysTravelAsPaddedTextAndTheClassKeysOwnValuesAreLost) {
    const std::string clsid = tessmark::testing::kTestClsid, base = tessmark::testing::kBhoBase;
    const std::string live = base + clsid, disabled = base + "AutorunsDisabled\\" + clsid;
    const char* section = "Registry\\All Users\\Browser Helper Objects";
    places.Set(HKLM, live, "Own", "lost");
    places.Set(HKLM, live + "\\Settings", "Name", "helper");
    places.SetDword(HKLM, live + "\\Settings", "Flags", 0x41);
    places.Set(HKLM, live + "\\Other", "Path", kNotepad);

    ops.MarkDisable(section, "Helper", clsid, 0);
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Settings", "Name"), (StoredValue{kSz, "helper"}));
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Settings", "Flags"), (StoredValue{kSz, "A"}));
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Other", "Path"), (StoredValue{kSz, kNotepad}));
    EXPECT_EQ(places.Value(HKLM, disabled, "Own"), std::nullopt);
    EXPECT_FALSE(places.KeyExists(HKLM, live));

    ops.MarkEnable(section, "Helper", clsid, 0);
    EXPECT_FALSE(places.KeyExists(HKLM, disabled));
    EXPECT_TRUE(places.KeyExists(HKLM, base + "AutorunsDisabled"));
    // The copies hold the whole 1024-character read, too long for the name
    // enumeration's data buffer: on the way back every value comes out
    // nameless and lands in the subkey's default value.
    for (const char* sub : {"\\Settings", "\\Other"}) {
        EXPECT_EQ(places.Value(HKLM, live + sub, ""), (StoredValue{kSz, ""})) << sub;
        EXPECT_EQ(places.Value(HKLM, live + sub, "Name"), std::nullopt) << sub;
        EXPECT_EQ(places.Value(HKLM, live + sub, "Path"), std::nullopt) << sub;
    }

    // A subkey with subkeys of its own stays behind with its parent.
    places.Set(HKLM, live + "\\Deep", "Name", "deep");
    places.MakeKey(HKLM, live + "\\Deep\\Deeper");
    ops.DisableBHO(clsid);
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Deep", "Name"), (StoredValue{kSz, "deep"}));
    EXPECT_FALSE(places.KeyExists(HKLM, disabled + "\\Deep\\Deeper"));
    EXPECT_TRUE(places.KeyExists(HKLM, live + "\\Deep\\Deeper"));
}

TEST_F(ItemOperations, ABrowserHelperWithoutSubkeysGoesRoundAsAnEmptyKey) {
    const std::string base = tessmark::testing::kBhoBase, clsid = tessmark::testing::kTestClsid;
    const std::string live = base + clsid, disabled = base + "AutorunsDisabled\\" + clsid;
    places.Set(HKLM, disabled, "Own", "lost");
    ops.MarkEnable("Registry\\All Users\\Browser Helper Objects", "Helper", clsid, 0);
    EXPECT_FALSE(places.KeyExists(HKLM, disabled));
    EXPECT_TRUE(places.KeyExists(HKLM, live));
    EXPECT_EQ(places.Value(HKLM, live, "Own"), std::nullopt);
}

}  // namespace
