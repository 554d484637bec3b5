#pragma once
// The list of start-up items: the rows behind the list view, its selection and
// sort key, and the image store its row icons come from. The list is the only
// store of current items; every part of the program reads rows back from it.
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace tessmark::discovery {

// A row's Tag: a number from the folder and Run-key scanners, a digit held as
// text from the logon scanner, or nothing yet.
using RowTag = std::variant<std::monostate, long, std::string>;

// The numeric value of a Tag as a numeric comparison sees it ("7" is 7);
// error 13 for text that is no number.
long TagNumber(const RowTag& tag);

// Where a row's item lies, set by the scanners for callers that move the item
// itself rather than the text the row shows; the window never reads it.
struct ItemPlace {
    enum class Kind { None, Value, ListMember, Shortcut, SettingsLine };
    Kind kind = Kind::None;
    std::uint32_t root = 0;  // registry root of a value or list
    std::string key;         // registry key; the shortcut's folder; the Settings.ini section
    std::string name;        // value name, up to its NUL; the shortcut's file name; the line's key
    std::string member;      // a list member as the scanner cut it from the list
};

// Texts enter a row cut at their first NUL (storage::StripAtNull): the
// registry's 1024-character reads and the shell's 260-character display names
// come padded with NULs, and a row hands its texts on as they stand, to the
// registry, to Settings.ini and to shortcut names. Value names are the one
// exception: they keep the single NUL the enumeration leaves behind them, and
// every call that takes a name stops there.
struct ItemRow {
    std::string Text;
    RowTag Tag;
    long SmallIcon = 0;  // 1-based index into the image store; 0: none yet
    bool Checked = false;
    bool Selected = false;
    std::string Key;  // never set by the program
    ItemPlace Place;

    // SubItems(1) path, SubItems(2) "Yes"/"No"/"NO", SubItems(3) section.
    // Other indexes raise error 380, as the control does.
    std::string& SubItems(int index);
    const std::string& SubItems(int index) const;

private:
    std::string subItems_[3];
};

// One picture in the image store: an icon of the shell's system image list,
// small or large, drawn from there when the row is painted.
struct IconImage {
    std::uintptr_t imageList = 0;
    std::int32_t index = 0;
    bool large = false;
    bool operator==(const IconImage&) const = default;
};

// An image list control: 1-based images; image 1 is the program's own icon
// once the store has been rebuilt.
class ImageStore {
public:
    long Count() const { return static_cast<long>(images_.size()); }
    void Clear() { images_.clear(); }
    long Add(const IconImage& image) {
        images_.push_back(image);
        return Count();
    }
    const IconImage& operator[](long index) const;  // error 35600 outside 1..Count

private:
    std::vector<IconImage> images_;
};

// A picture box that shows one drawn icon.
struct PictureBox {
    bool hasPicture = false;
    IconImage picture;
    long Width = 0, Height = 0;
};

class ItemList {
public:
    long Count() const { return static_cast<long>(rows_.size()); }
    // ListItems(i), 1-based; error 35600 outside 1..Count.
    ItemRow& operator()(long index);
    ItemRow& Add();
    void Clear();

    // The selected row; error 91 when none is selected.
    ItemRow& SelectedItem();
    bool HasSelection() const { return selected_ != nullptr; }
    void Select(ItemRow& row);
    long IndexOf(const ItemRow& row) const;  // 1-based, 0 when not a row of this list

    long SortKey = 0;
    long SortOrder = 0;
    // Puts the rows in order of the column SortKey (0 the name, 1 to 3 the
    // sub-items), ascending for SortOrder 0, by text without regard to case;
    // rows that compare equal keep their order. Rows move; the selection stays
    // with its row.
    void Sort();
    bool Sorted = false;
    bool Visible = true;

    // Rows in display order, for the view.
    const std::vector<std::unique_ptr<ItemRow>>& Rows() const { return rows_; }

private:
    std::vector<std::unique_ptr<ItemRow>> rows_;
    ItemRow* selected_ = nullptr;
};

}  // namespace tessmark::discovery
