#include "monitor/FrmNotify.h"

#include <algorithm>

#include "discovery/Logon.h"
#include "operations/Locations.h"
#include "registry/registry_module.h"
#include "storage/modStartup.h"
#include "vb/vb.h"

namespace tessmark::monitor {

namespace section = catalogue::section;
using catalogue::Place;
using operations::FindSection;
using operations::S;
using platform::reg::kLocalMachine;

namespace {

// The first row of the array with this section, path and name; null when none.
MonitorRow* FirstRow(vb::Array<MonitorRow>& rows, const std::string& section, const std::string& path,
                     const std::string& name) {
    const long last = rows.UBound();
    for (long i = 0; i <= last; ++i)
        if (rows[i].Section == section && rows[i].Path == path && rows[i].Name == name) return &rows[i];
    return nullptr;
}

}  // namespace

std::string& FrmNotify::Label(std::string_view name) {
    if (name == "LblName") return LblName;
    if (name == "LblMsg") return LblMsg;
    if (name == "LblPath") return LblPath;
    if (name == "LblSection") return LblSection;
    if (name == "LblDescription") return LblDescription;
    if (name == "LblChange") return LblChange;
    if (name == "LblKey") return LblKey;
    if (name == "LblNewSection") return LblNewSection;
    throw vb::VbError(vb::err::kNoSuchMember);
}

NotifyButton& FrmNotify::Button(std::string_view name) {
    if (name == "CmdDisable") return CmdDisable;
    if (name == "CmdAllow") return CmdAllow;
    if (name == "CmdDiscard") return CmdDiscard;
    throw vb::VbError(vb::err::kNoSuchMember);
}

void FrmNotify::Show() {
    Visible = true;
    forms_.shown(*this);
}

std::string_view FrmNotify::NextButton(std::string_view from, bool back) const {
    const std::pair<std::string_view, const NotifyButton*> tabOrder[] = {
        {"CmdDisable", &CmdDisable}, {"CmdAllow", &CmdAllow}, {"CmdDiscard", &CmdDiscard}};
    constexpr long n = std::size(tabOrder);
    long at = back ? 0 : n - 1;  // from none: as if from beyond the end
    for (long i = 0; i < n; ++i)
        if (tabOrder[i].first == from) at = i;
    for (long step = 1; step <= n; ++step) {
        const auto& [name, button] = tabOrder[(at + (back ? n - step : step)) % n];
        if (button->Enabled) return name;
    }
    return {};
}

void FrmNotify::Unload() {
    Visible = false;
    SkinnedDialog::Unload();
    forms_.unloaded(*this);
}

void FrmNotify::FillMembers() {
    ChangePath = vb::Mid(LblPath, 7);
    ChangeSection = vb::Mid(LblSection, 10);
}

registry::AdvRegistryAccess& FrmNotify::objReg() {
    if (!objReg_) objReg_ = std::make_unique<registry::AdvRegistryAccess>(context_.form.ports.registry);
    return *objReg_;
}

// ---- buttons

void FrmNotify::CmdDiscard_Click() {
    const std::string code = vb::Left(LblChange, 4);
    FillMembers();
    ChangeArgument = vb::Mid(LblChange, 6);
    if (code == "EtoD") ReEnableItem();
    else if (code == "DtoE") CmdDisable_Click();
    else if (code == "Move") MoveBack();
    else if (code == "Dele") RevertItem();
    else if (code == "NAdd") DeleteAgain();
    Unload();
}

void FrmNotify::ItemArguments(std::string& itemPath, std::int32_t& itemValue) {
    itemValue = 0;
    if (ChangeSection == section::kBrowserHelperObjects) {
        itemPath = LblKey;
    } else if (ChangeSection == section::kDrivers) {
        itemPath.clear();
        itemValue = operations::StartTypeWord(LblKey);
    } else {
        itemPath = ChangePath;
    }
}

// The first baseline row of this item gets the new enabled flag, so that the
// next pass doesn't report what the dialog did.
void FrmNotify::PatchValues(const std::string& values) {
    if (MonitorRow* row = FirstRow(context_.rows.SavedRows, ChangeSection, ChangePath, LblName)) row->Values = values;
}

void FrmNotify::CmdDisable_Click() {
    FillMembers();
    std::string itemPath;
    std::int32_t itemValue;
    ItemArguments(itemPath, itemValue);
    context_.ops.MarkDisable(ChangeSection, LblName, itemPath, itemValue);
    PatchValues("No");
}

void FrmNotify::ReEnableItem() {
    std::string itemPath;
    std::int32_t itemValue;
    ItemArguments(itemPath, itemValue);
    context_.ops.MarkEnable(ChangeSection, LblName, itemPath, itemValue);
    PatchValues("Yes");
}

void FrmNotify::MoveBack() {
    const long separator = vb::InStr(6, LblChange, ";");
    const std::string oldPath = vb::Mid(LblChange, 6, separator - 6);
    const std::string newPath = vb::Mid(LblChange, separator + 1);
    objReg().WriteString(oldPath, LblName, ChangePath);
    objReg().KillValue(newPath, LblName);
    // LblNewSection holds the section of the row with the baseline's index,
    // which is the item's new section only by chance.
    if (MonitorRow* row = FirstRow(context_.rows.SavedRows, LblNewSection, ChangePath, LblName))
        row->Section = ChangeSection;
}

void FrmNotify::RevertItem() {
    if (const catalogue::ItemSection* logon = FindSection(Place::NamedValue, ChangeSection))
        discovery::AddLogonFolder(context_.form, ChangeArgument, S(logon->enabled.valueName), LblName);
    else
        objReg().WriteString(ChangeArgument, LblName, ChangePath);

    // The row comes back into both arrays unless it is there; each grows by
    // one element either way.
    for (vb::Array<MonitorRow>* rows : {&context_.rows.SavedRows, &context_.rows.CurrentRows}) {
        const bool found = FirstRow(*rows, ChangeSection, ChangePath, LblName) != nullptr;
        const long last = rows->UBound();
        rows->ReDimPreserve(last + 1);
        if (!found) (*rows)[last + 1] = {LblName, ChangePath, "Yes", ChangeSection, LblKey};
    }
}

void FrmNotify::DeleteAgain() {
    auto& registry = context_.form.ports.registry;
    if (const catalogue::ItemSection* folder = FindSection(Place::ShellFolder, ChangeSection)) {
        // Settings.ini is left alone.
        context_.ops.KillShortcutsTo(
            storage::GetSpecialFolder(context_.form.ports.shell, folder->enabled.shellFolder), ChangePath);
    } else if (const catalogue::ItemSection* run = FindSection(Place::KeyValues, ChangeSection)) {
        // Both states of the item go: the live value and its disabled copy.
        registry::DeleteRegValue(registry, run->enabled.root, S(run->operationsKey), LblName);
        registry::DeleteRegValue(registry, run->enabled.root, S(run->operationsKey) + "\\AutorunsDisabled", LblName);
    } else if (const catalogue::ItemSection* logon = FindSection(Place::NamedValue, ChangeSection)) {
        context_.ops.DeleteLogon(S(logon->operationsKey), LblName, S(logon->enabled.valueName));
    } else if (ChangeSection == section::kServices || ChangeSection == section::kDrivers) {
        registry.RegDeleteKeyA(kLocalMachine, (S(catalogue::kServicesKey) + LblName).c_str());
    } else if (ChangeSection == section::kBrowserHelperObjects) {
        registry.RegDeleteKeyA(kLocalMachine, (S(catalogue::kBhoKey) + LblKey).c_str());
    }

    // The row is blanked where it stands; the arrays keep their length.
    for (vb::Array<MonitorRow>* rows : {&context_.rows.CurrentRows, &context_.rows.SavedRows})
        if (MonitorRow* row = FirstRow(*rows, ChangeSection, ChangePath, LblName)) *row = MonitorRow{};
}

// ---- the instances

FrmNotify& NotifyForms::New() {
    std::erase_if(forms_, [](const std::unique_ptr<FrmNotify>& form) { return !form->Loaded(); });
    forms_.push_back(std::make_unique<FrmNotify>(context_, *this));
    return *forms_.back();
}

std::vector<FrmNotify*> NotifyForms::Loaded() const {
    std::vector<FrmNotify*> loaded;
    for (const auto& form : forms_)
        if (form->Loaded()) loaded.push_back(form.get());
    return loaded;
}

}  // namespace tessmark::monitor
