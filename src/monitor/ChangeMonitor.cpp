#include "monitor/ChangeMonitor.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include "catalogue/sections.h"
#include "discovery/GetExeName.h"
#include "discovery/ItemList.h"
#include "storage/filesearch.h"
#include "ui/CFileVersionInfo.h"
#include "vb/vb.h"

namespace tessmark::monitor {

namespace key = catalogue::key;
using catalogue::FindKey;
using catalogue::FindPath;

namespace {

constexpr std::array<std::string_view, 7> kRunFamily = {
    key::kRunOnceAll, key::kRunExAll,   key::kRunServiceAll,   key::kRunServiceOnceAll,
    key::kRunCurr,    key::kRunOnceCurr, key::kRunServiceCurr,
};

// Where a gone item can be put back from its dialog. The two folder keys are
// tested though FindKey never gives them.
constexpr std::array<std::string_view, 12> kRestorable = {
    key::kRunOnceAll,  key::kRunExAll,     key::kRunServiceAll, key::kRunServiceOnceAll,
    key::kRunCurr,     key::kRunOnceCurr,  key::kRunServiceCurr, key::kStartupAll,
    key::kUserinitAll, key::kShellAll,     key::kAllUsers,       key::kCurrUser,
};

bool In(const auto& set, const std::string& nodeKey) {
    return std::find(set.begin(), set.end(), nodeKey) != set.end();
}

bool SameItem(const MonitorRow& a, const MonitorRow& b) { return a.Name == b.Name && a.Path == b.Path; }
bool SamePlace(const MonitorRow& a, const MonitorRow& b) { return SameItem(a, b) && a.Section == b.Section; }

// One pass's comparison: the dialogs it opens and the one version reader
// they share, so a file without a description shows the one read before it.
class Comparison {
public:
    Comparison(discovery::ScanContext& form, publicVar& rows, NotifyForms& forms)
        : form_(form), saved_(rows.SavedRows), current_(rows.CurrentRows), rows_(rows), forms_(forms) {}

    void BaselineRow(long i);
    void AdditionRow(long i);

private:
    // A new dialog describing row X with the file F; `path` gives LblPath's text.
    FrmNotify& Fill(const MonitorRow& X, const std::string& F, const std::function<std::string()>& path);
    void ReportMove(long i, const MonitorRow& S, const MonitorRow& C);
    void ReportFlag(const MonitorRow& S, const MonitorRow& now);
    void ReportGone(const MonitorRow& S);

    discovery::ScanContext& form_;
    vb::Array<MonitorRow>& saved_;
    vb::Array<MonitorRow>& current_;
    publicVar& rows_;
    NotifyForms& forms_;
    std::unique_ptr<ui::CFileVersionInfo> info_;
};

FrmNotify& Comparison::Fill(const MonitorRow& X, const std::string& F, const std::function<std::string()>& path) {
    FrmNotify& dialog = forms_.New();
    if (!info_) info_ = std::make_unique<ui::CFileVersionInfo>(form_.ports.files, form_.ports.shell);
    std::string file = F;
    std::string once = discovery::GetExeName(file, form_.folders);
    info_->FullPathName(discovery::GetExeName(once, form_.folders));
    const std::string description = info_->FileDescription();
    dialog.Label("LblDescription") = "Description: " + (description.empty() ? std::string("N/A") : description);
    dialog.Label("LblName") = X.Name;
    dialog.Label("LblSection") = "Section: " + X.Section;
    dialog.Label("LblPath") = path ? path() : "Path: " + F;
    return dialog;
}

void Comparison::BaselineRow(long i) {
    const MonitorRow S = saved_[i];
    const long lastCurrent = current_.UBound() - 1;
    bool deleted = true;
    for (long j = 0; j <= lastCurrent; ++j) {
        if (SamePlace(current_[j], S) && current_[j].Values == S.Values) {
            deleted = false;
            break;
        }
    }
    if (deleted) {
        for (long k = 0; k <= lastCurrent; ++k) {
            const MonitorRow C = current_[k];
            if (!SameItem(C, S)) continue;
            long same = -1;  // the last row still in S's section wins
            for (long m = 0; m <= lastCurrent; ++m)
                if (SamePlace(current_[m], S)) same = m;
            if (same >= 0) {
                deleted = false;
                if (current_[same].Values == S.Values) break;
                ReportFlag(S, current_[same]);
                continue;
            }
            // S's section has no such row any more: a move, unless C has a baseline row of its own.
            bool known = false;
            for (long p = 0; p <= saved_.UBound() - 1 && !known; ++p) known = SamePlace(saved_[p], C);
            if (known) continue;
            deleted = false;
            if (C.Values != S.Values) continue;  // moved and switched: reported as nothing
            ReportMove(i, S, C);
        }
    }
    if (!S.Name.empty() && deleted) ReportGone(S);
}

void Comparison::ReportMove(long i, const MonitorRow& S, const MonitorRow& C) {
    const std::string K1 = FindKey(S.Section);
    const bool resolvable = InRunFamily(K1) && InRunFamily(FindKey(C.Section));
    const std::string P1 = FindPath(C.Section), P2 = FindPath(S.Section);
    FrmNotify& dialog = Fill(S, S.Path, nullptr);
    // The baseline's index on purpose; MoveBack works with this text as it stands.
    dialog.Label("LblNewSection") = current_[i].Section;
    dialog.Label("LblMsg") = S.Name + " is moved from " + S.Section + " to " + C.Section;
    dialog.Label("LblChange") = "Move;" + P2 + ";" + P1;
    if (!resolvable) {
        dialog.Button("CmdAllow").Enabled = false;
        dialog.Button("CmdDiscard").Enabled = false;
    }
    dialog.Show();
}

void Comparison::ReportFlag(const MonitorRow& S, const MonitorRow& now) {
    FrmNotify& dialog = Fill(S, S.Path, nullptr);
    dialog.Label("LblKey") = S.Key;
    dialog.Button("CmdDisable").Enabled = false;
    if (now.Values == "No" && S.Values == "Yes") {
        dialog.Label("LblMsg") = S.Name + " is marked as Disabled!!! ";
        dialog.Label("LblChange") = "EtoD";
    } else if (S.Values == "No" && now.Values == "Yes") {
        dialog.Label("LblMsg") = S.Name + " is marked as Enabled!!! ";
        dialog.Label("LblChange") = "DtoE";
    }
    dialog.Show();
}

void Comparison::ReportGone(const MonitorRow& S) {
    const std::string K1 = FindKey(S.Section), P = FindPath(S.Section);
    FrmNotify& dialog = Fill(S, S.Path, nullptr);
    dialog.Label("LblMsg") = S.Name + " is deleted from Reigstry Path " + S.Section;
    dialog.Label("LblChange") = "Dele;" + P;
    dialog.Button("CmdDisable").Enabled = false;
    if (!In(kRestorable, K1)) dialog.Button("CmdDiscard").Enabled = false;
    dialog.Show();
}

void Comparison::AdditionRow(long i) {
    const MonitorRow C = current_[i];
    rows_.FirstSearchDone = false;
    bool isNew = true;
    const long last = saved_.UBound();  // the blank last row included
    for (long j = 0; j <= last; ++j) {
        if (SameItem(saved_[j], C)) {
            isNew = false;
            break;
        }
    }
    if (!isNew) return;
    const std::string P = FindPath(C.Section);
    // The baseline row of the same index, on purpose: the Discard button inherits it.
    FrmNotify& dialog = Fill(C, C.Path, [&] { return "Path: " + saved_[i].Path; });
    dialog.Label("LblMsg") = C.Name + " is added to Registry Path " + C.Section;
    dialog.Label("LblChange") = "NAdd;" + P;
    dialog.Show();
}

}  // namespace

bool InRunFamily(const std::string& nodeKey) { return In(kRunFamily, nodeKey); }

void ChangeMonitor::StartSearch() {
    rescan_();
    auto& list = form_.ListView1;
    auto& current = rows.CurrentRows;
    current.Erase();
    const long n = list.Count();
    current.ReDim(n);
    for (long r = 0; r <= n - 1; ++r) {
        const discovery::ItemRow& item = list(r + 1);
        current[r] = {item.Text, item.SubItems(1), item.SubItems(2), item.SubItems(3), ""};
        const MonitorRow& row = current[r];
        form_.ports.ui.ActivityLog("Tessmark - " + storage::StripAtNull(row.Name) + " Path-> " +
                                   storage::StripAtNull(row.Path) + " Section-> " + storage::StripAtNull(row.Section));
    }

    Comparison comparison(form_, rows, forms);
    const long lastSaved = rows.SavedRows.UBound() - 1;  // error 9 before the first baseline
    for (long i = 0; i <= lastSaved; ++i) comparison.BaselineRow(i);
    const long lastCurrent = current.UBound() - 1;
    for (long i = 0; i <= lastCurrent; ++i) comparison.AdditionRow(i);
    SaveState();
}

void ChangeMonitor::SaveState() {
    form_.HourglassUnlessTimer();
    rescan_();
    auto& saved = rows.SavedRows;
    saved.Erase();
    const long n = form_.ListView1.Count();
    saved.ReDim(n);
    // A 16-bit counter: a list of more than 32,767 rows overflows it.
    const vb::Integer last = vb::CInt(n - 1);
    for (vb::Integer r = 0; r <= last; ++r) {
        auto item = [&]() -> discovery::ItemRow& { return form_.ListView1(r + 1); };
        saved[r] = {item().Text, item().SubItems(1), item().SubItems(2), item().SubItems(3), item().Key};
    }
    form_.ports.ui.SetMousePointer(platform::kMousePointerDefault);
}

}  // namespace tessmark::monitor
