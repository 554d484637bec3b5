// What the user does to the list: a check box acts at once, with no question
// and no word of success or failure.
#include "frame/FrmMain2.h"
#include "vb/vb.h"

namespace tessmark::frame {

using discovery::ItemRow;
using vb::Resume;

namespace {

constexpr int kRightButton = 2;
constexpr int kF2 = 113;
constexpr int kF5 = 116;

}  // namespace

void FrmMain2::ListView1_ItemCheck(ItemRow& Item) {
    // Tags 19 (services, drivers) and 20 (browser helpers) are never given by a scanner.
    std::string SectionName = Item.SubItems(3), ItemName = Item.Text, ItemPath;
    std::int32_t ItemValue = 0;
    const long tag = discovery::TagNumber(Item.Tag);
    if (tag == 20) {
        ItemPath = Item.Key;
    } else if (tag == 19) {
        ItemValue = operations::StartTypeWord(Item.Key);
    } else {
        ItemPath = Item.SubItems(1);
    }

    // Checked says which operation; the row's own text says its new look. A
    // disabled logon row's "NO" is not "No", so it flips to "No" once more.
    if (Item.Checked)
        MarkEnable(SectionName, ItemName, ItemPath, ItemValue);
    else
        MarkDisable(SectionName, ItemName, ItemPath, ItemValue);
    if (Item.SubItems(2) == "No") {
        Item.SubItems(2) = "Yes";
        Item.Checked = true;
    } else {
        Item.SubItems(2) = "No";
        Item.Checked = false;
    }
    refreshCheckBox();
    ListView1.Select(Item);
    ListView1_Click();
}

void FrmMain2::ListView1_DblClick() {
    Resume([&] {
        ItemRow& row = ListView1.SelectedItem();
        row.Checked = !row.Checked;
    });
    Resume([&] { ListView1_ItemCheck(ListView1.SelectedItem()); });
}

void FrmMain2::ListView1_KeyDown(int KeyCode, int) {
    if (KeyCode == kF2) {
        Resume([&] {
            ItemRow& row = ListView1(ListView1.IndexOf(ListView1.SelectedItem()));
            row.Checked = !row.Checked;
        });
        Resume([&] { ListView1_ItemCheck(ListView1(ListView1.IndexOf(ListView1.SelectedItem()))); });
    } else if (KeyCode == kF5) {
        Resume([&] { treeAuto_Click(); });
    }
}

void FrmMain2::mnuDisable_Click() {
    ListView1_KeyDown(kF2, 0);
    Resume([&] {
        if (!ListView1.SelectedItem().Checked) FrmMenu.mnuDisable.Checked = true;
    });
}

// The caption follows the selected row, not the row under the pointer.
void FrmMain2::ListView1_MouseDown(int Button, int, float, float) {
    if (Button != kRightButton) return;
    if (ListView1.Count() >= 1) {
        if (ListView1.SelectedItem().Checked) {
            FrmMenu.mnuDisable.Caption = "Disable";
            FrmMenu.mnuDisable.Checked = false;
        } else {
            FrmMenu.mnuDisable.Caption = "Enable";
            FrmMenu.mnuDisable.Checked = true;
        }
    }
    PopupMenu(FrmMenu.mnuPopup);
}

// Always ascending: a second click on the same column does not reverse.
void FrmMain2::ListView1_ColumnClick(long ColumnHeaderIndex) {
    ListView1.SortKey = ColumnHeaderIndex - 1;
    ListView1.SortOrder = 0;
    ListView1.Sort();
}

}  // namespace tessmark::frame
