// The change monitor: what a pass reports after each kind of change.
#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "catalogue/sections.h"
#include "frame/FrmMain2.h"
#include "item_places.h"

using namespace tessmark;
using tessmark::testing::ItemPlaces;
using catalogue::FindPath;

namespace {

const std::string kOnce = std::string(tessmark::testing::kRunBase) + "RunOnce";
const std::string kOnceOff = kOnce + "\\AutorunsDisabled";
const std::string kAllOnce = "Registry\\All Users\\RunOnce";
const std::string kCurrOnce = "Registry\\Current User\\RunOnce";
constexpr platform::RegHandle HKLM = platform::reg::kLocalMachine;
constexpr platform::RegHandle HKCU = platform::reg::kCurrentUser;

// Label text without the NUL tails that value names may carry.
std::string Plain(std::string text) {
    std::erase(text, '\0');
    return text;
}

// A dialog as the user and the resolution see it: message, change, path, section,
// new section, and the buttons Disable, Allow, Discard as "-++".
using Dialog = std::vector<std::string>;

class ChangeMonitor : public ::testing::Test {
public:
    std::unique_ptr<tessmark::testing::TestMachine> machine = tessmark::testing::MakeTestMachine();
    std::optional<ItemPlaces> places{*machine};
    std::unique_ptr<frame::FrmMain2> form = Fresh();

    // Emptied places and a new main form, as after a restart.
    std::unique_ptr<frame::FrmMain2> Fresh() {
        places.reset();
        places.emplace(*machine);
        auto made = std::make_unique<frame::FrmMain2>(machine->Ports());
        made->folders = {machine->Files().Environ("windir"), machine->ScratchFolder("TessmarkMonitor")};
        for (const char* name : {"t", "u", "g", "n", "a", "b", "o", "old"})
            machine->Files().WriteWholeFile(File(name), "MZ");
        return made;
    }
    // A program file that exists, so that its row keeps its path; no hyphen
    // in the folder, where the reduction of a command line would cut.
    std::string File(const std::string& name) { return "C:\\TessmarkMonitor\\" + name + ".exe"; }
    void Set(platform::RegHandle root, const std::string& key, const std::string& name, const std::string& data) {
        places->Set(root, key, name, data);
    }

    // The dialogs standing, oldest first.
    std::vector<Dialog> Dialogs() {
        std::vector<Dialog> shown;
        for (monitor::FrmNotify* d : form->monitor.forms.Loaded()) {
            if (!d->Visible) continue;
            std::string buttons;
            for (auto* b : {&d->CmdDisable, &d->CmdAllow, &d->CmdDiscard}) buttons += b->Enabled ? '+' : '-';
            shown.push_back({Plain(d->LblMsg), Plain(d->LblChange), Plain(d->LblPath), Plain(d->LblSection),
                             Plain(d->LblNewSection), buttons});
        }
        return shown;
    }
};

using Step = std::function<void(ChangeMonitor&)>;

struct Change {
    const char* what;
    Step before, change;
};

// Kinds of change on one value "Tool" of RunOnce, all-users unless said.
const Step kToolOn = [](ChangeMonitor& t) { t.Set(HKLM, kOnce, "Tool", t.File("t")); };
const Step kToolOff = [](ChangeMonitor& t) { t.Set(HKLM, kOnceOff, "Tool", t.File("t")); };
const Step kDelete = [](ChangeMonitor& t) { t.places->Delete(HKLM, kOnce, "Tool"); };
const Step kDisable = [](ChangeMonitor& t) { kDelete(t), kToolOff(t); };
const Step kEnable = [](ChangeMonitor& t) { t.places->Delete(HKLM, kOnceOff, "Tool"), kToolOn(t); };
const Step kMoveToCurrentUser = [](ChangeMonitor& t) { kDelete(t), t.Set(HKCU, kOnce, "Tool", t.File("t")); };
const Step kNothing = [](ChangeMonitor&) {};

TEST_F(ChangeMonitor, EachKindOfChangeOpensItsDialogs) {
    const std::string pathAll = FindPath(kAllOnce), pathCurr = FindPath(kCurrOnce);
    const struct {
        Change c;
        std::vector<Dialog> dialogs;
    } cases[] = {
        {{"nothing changed", kToolOn, kNothing}, {}},
        {{"renamed: gone and new; the new one shows the baseline's path of its index", kToolOn,
          [](ChangeMonitor& t) { kDelete(t), t.Set(HKLM, kOnce, "Tool2", t.File("u")); }},
         {{"Tool is deleted from Reigstry Path " + kAllOnce, "Dele;" + pathAll, "Path: " + File("t"),
           "Section: " + kAllOnce, "", "-++"},
          {"Tool2 is added to Registry Path " + kAllOnce, "NAdd;" + pathAll, "Path: " + File("t"), "Section: " + kAllOnce,
           "", "+++"}}},
        {{"disabled", kToolOn, kDisable},
         {{"Tool is marked as Disabled!!! ", "EtoD", "Path: " + File("t"), "Section: " + kAllOnce, "", "-++"}}},
        {{"enabled", kToolOff, kEnable},
         {{"Tool is marked as Enabled!!! ", "DtoE", "Path: " + File("t"), "Section: " + kAllOnce, "", "-++"}}},
        {{"moved between two Run sections", kToolOn, kMoveToCurrentUser},
         {{"Tool is moved from " + kAllOnce + " to " + kCurrOnce, "Move;" + pathAll + ";" + pathCurr,
           "Path: " + File("t"), "Section: " + kAllOnce, kCurrOnce, "+++"}}},
        {{"moved and disabled: nothing at all", kToolOn,
          [](ChangeMonitor& t) { kDelete(t), t.Set(HKCU, kOnceOff, "Tool", t.File("t")); }},
         {}},
        {{"moved between the Startup folders: only marking it disabled is offered",
          [](ChangeMonitor& t) { t.places->Ini("StartupAllUser").IniWriteValue("Tool", t.File("t")); },
          [](ChangeMonitor& t) {
              t.machine->Files().Kill(t.places->SettingsFile());
              t.places->Ini("StartupCurrUser").IniWriteValue("Tool", t.File("t"));
          }},
         {{"Tool is moved from All Users\\Startup to Current User\\Startup", "Move;;", "Path: " + File("t"),
           "Section: All Users\\Startup", "Current User\\Startup", "+--"}}},
        {{"a Startup item gone can't be put back from the dialog",
          [](ChangeMonitor& t) { t.places->Ini("StartupAllUser").IniWriteValue("Gone", t.File("g")); },
          [](ChangeMonitor& t) { t.machine->Files().Kill(t.places->SettingsFile()); }},
         {{"Gone is deleted from Reigstry Path All Users\\Startup", "Dele;", "Path: " + File("g"),
           "Section: All Users\\Startup", "", "-+-"}}},
        {{"an addition to an empty baseline shows the blank row's path", kNothing,
          [](ChangeMonitor& t) { t.places->Ini("StartupAllUser").IniWriteValue("New", t.File("n")); }},
         {{"New is added to Registry Path All Users\\Startup", "NAdd;", "Path: ", "Section: All Users\\Startup", "",
           "+++"}}},
    };
    for (const auto& [c, dialogs] : cases) {
        form = Fresh();
        c.before(*this);
        form->SaveState();
        c.change(*this);
        form->StartSearch();
        EXPECT_EQ(Dialogs(), dialogs) << c.what;
        // Every completed pass saves a new baseline, so the next one is silent.
        form->StartSearch();
        EXPECT_EQ(Dialogs().size(), dialogs.size()) << c.what;
    }
}

}  // namespace

// A dialog of a new logon member, filled as a pass fills it; no pass lists logon values.
const Step kNewUserinitMember = [](ChangeMonitor& t) {
    t.Set(HKLM, tessmark::testing::kWinlogon, "Userinit", "u,n");
    monitor::FrmNotify& d = t.form->monitor.forms.New();
    d.LblName = "n", d.LblChange = "NAdd;", d.LblPath = "Path: " + t.File("n");
    d.LblMsg = "n is added to Registry Path Registry\\All Users\\Logon\\UserInit";
    d.LblSection = "Section: Registry\\All Users\\Logon\\UserInit";
    d.Show();
};

TEST_F(ChangeMonitor, EachAnswerLeavesTheMachineAndTheNextPassAsItSays) {
    const std::string on = "HKLM RunOnce Tool=" + File("t"), off = "HKLM RunOnce\\AutorunsDisabled Tool=" + File("t");
    const std::string added = "Tool2 is added to Registry Path " + kAllOnce;
    const Step renamed = [](ChangeMonitor& t) { kDelete(t), t.Set(HKLM, kOnce, "Tool2", t.File("t")); };
    // The new shortcut is the list's first row, and the baseline's first row has its target.
    const Step other = [](ChangeMonitor& t) { t.Set(HKLM, kOnce, "Other", t.File("n")); };
    const Step shortcut = [](ChangeMonitor& t) {
        t.places->Delete(HKLM, kOnce, "Other");
        t.places->Shortcut(platform::kCsidlCommonStartup, "New.lnk", t.File("n"));
    };
    const Step userinit = [](ChangeMonitor& t) { t.Set(HKLM, tessmark::testing::kWinlogon, "Userinit", "u"); };
    const std::string nName = "n.exe";
    const struct {
        Change c;
        std::size_t dialog;
        char button;  // Allow, Discard, Mark as Disabled, Close
        std::vector<std::string> machine, dialogs;
    } cases[] = {
        {{"new value allowed", kToolOn, renamed}, 1, 'A', {"HKLM RunOnce Tool2=" + File("t")}, {"Tool is deleted from Reigstry Path " + kAllOnce}},
        {{"new value closed", kToolOn, renamed}, 1, 'C', {"HKLM RunOnce Tool2=" + File("t")}, {"Tool is deleted from Reigstry Path " + kAllOnce}},
        {{"new value discarded: gone in both states", kToolOn,
          [renamed](ChangeMonitor& t) { renamed(t), t.Set(HKLM, kOnceOff, "Tool2", "x"); }},
         1, 'X', {}, {"Tool is deleted from Reigstry Path " + kAllOnce, "Tool2 is added to Registry Path " + kAllOnce,
                      "Tool2 is deleted from Reigstry Path " + kAllOnce}},
        {{"new value disabled, the dialog stays", kToolOn, renamed}, 1, 'D',
         {"HKLM RunOnce\\AutorunsDisabled Tool2=" + File("t")}, {"Tool is deleted from Reigstry Path " + kAllOnce, added}},
        {{"gone value discarded: written back", kToolOn, renamed}, 0, 'X',
         {on, "HKLM RunOnce Tool2=" + File("t")}, {added}},
        {{"disabled value discarded", kToolOn, kDisable}, 0, 'X', {on}, {}},
        {{"enabled value discarded", kToolOff, kEnable}, 0, 'X', {off}, {}},
        {{"move discarded", kToolOn, kMoveToCurrentUser}, 0, 'X', {on}, {}},
        {{"new shortcut discarded", other, shortcut}, 1, 'X', {}, {"Other is deleted from Reigstry Path " + kAllOnce}},
        {{"new shortcut disabled", other, shortcut}, 1, 'D',
         {"ini [StartupAllUser]\r\n" + nName + "=" + File("n") + "\r\n"}, {"Other is deleted from Reigstry Path " + kAllOnce, nName + " is added to Registry Path All Users\\Startup"}},
        {{"new shortcut allowed", other, shortcut}, 1, 'A', {"lnk 24 New.lnk -> " + File("n")}, {"Other is deleted from Reigstry Path " + kAllOnce}},
            {{"new logon member discarded", userinit, kNewUserinitMember}, 0, 'X', {"HKLM Userinit=u"}, {}},
        {{"new logon member disabled", userinit, kNewUserinitMember}, 0, 'D',
         {"HKLM Userinit=u", "HKLM Userinit\\AutorunsDisabled=n"}, {"n is added to Registry Path Registry\\All Users\\Logon\\UserInit"}},
        {{"new logon member allowed", userinit, kNewUserinitMember}, 0, 'A', {"HKLM Userinit=u,n"}, {}},
    };
    for (const auto& [c, index, button, machineAfter, dialogsAfter] : cases) {
        form = Fresh();
        c.before(*this);
        form->SaveState();
        c.change(*this);
        form->StartSearch();
        const auto standing = form->monitor.forms.Loaded();
        ASSERT_GT(standing.size(), index) << c.what;
        monitor::FrmNotify& d = *standing[index];
        switch (button) {
            case 'A': d.CmdAllow_Click(); break;
            case 'X': d.CmdDiscard_Click(); break;
            case 'D': d.CmdDisable_Click(); break;
            case 'C': d.CmdClose_MouseUp(1); break;
        }
        auto expected = machineAfter;
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(places->Everything(), expected) << c.what;
        form->StartSearch();
        std::vector<std::string> messages;
        for (const auto& shown : Dialogs()) messages.push_back(shown[0]);
        EXPECT_EQ(messages, dialogsAfter) << c.what;
    }
}

namespace {

// Services, drivers and browser helpers are never listed by a pass: their dialogs are filled by hand.
TEST_F(ChangeMonitor, ServiceDriverAndHelperDialogsActOnTheirKeys) {
    using tessmark::testing::Dword;
    const std::string service = tessmark::testing::kServiceKey;
    const std::string helper = tessmark::testing::kBhoBase + std::string(tessmark::testing::kTestClsid);
    const struct {
        const char *section, *code, *key;
        char button;
        bool serviceKept, helperKept;
        std::optional<tessmark::testing::RawValue> start, mark;
    } cases[] = {
        {"Services", "NAdd;", "", 'X', false, true, {}, {}}, {"Drivers", "NAdd;", "", 'X', false, true, {}, {}},
        {"Browser Helper Objects", "NAdd;", tessmark::testing::kTestClsid, 'X', true, false, Dword(2), {}},
        {"Services", "NAdd;", "", 'D', true, true, Dword(4), Dword(1)},
        {"Drivers", "NAdd;", "Three,x", 'D', true, true, Dword(4), Dword(3)},
        {"Drivers", "EtoD", "One,x", 'X', true, true, Dword(1), {}},
        {"Services", "Else", "", 'X', true, true, Dword(2), {}},
    };
    for (const auto& c : cases) {
        form = Fresh();
        places->Put(HKLM, service, "Start", Dword(2));
        places->Set(HKLM, helper, "", "x");
        form->SaveState();
        form->StartSearch();
        monitor::FrmNotify& d = form->monitor.forms.New();
        d.LblName = "TessmarkTestService", d.LblChange = c.code, d.LblKey = c.key;
        d.LblSection = "Section: Registry\\All Users\\" + std::string(c.section);
        c.button == 'X' ? d.CmdDiscard_Click() : d.CmdDisable_Click();
        const std::string what = std::string(c.section) + " " + c.code + c.button;
        EXPECT_EQ(std::make_pair(places->KeyExists(HKLM, service), places->KeyExists(HKLM, helper)),
                  std::make_pair(c.serviceKept, c.helperKept)) << what;
        EXPECT_EQ(places->Raw(HKLM, service, "Start"), c.start) << what;
        EXPECT_EQ(places->Raw(HKLM, service, "AutorunsDisabled"), c.mark) << what;
        EXPECT_THROW(d.Label("LblNone"), vb::VbError);
        EXPECT_THROW(d.Button("CmdNone"), vb::VbError);
    }
}

}  // namespace
