#include "discovery/RowServices.h"

#include "vb/vb.h"

namespace tessmark::discovery {

using vb::Resume;

namespace {
constexpr std::uint32_t kLargeIconFlags = 0x6602;  // sys index, exe type, type name, display name, open icon
constexpr std::uint32_t kSmallIconFlags = 0x6603;  // the same plus the small icon

void Need(const void* object) {
    if (object == nullptr) throw vb::VbError(vb::err::kObjectNotSet);
}
}  // namespace

long AddItemIcon(platform::ShellPort& shell, platform::ShFileInfo& record, std::string& path,
                 ImageStore* imageList, PictureBox* picture, std::int16_t iconSize,
                 std::string& displayName) {
    long result = 0;
    std::uintptr_t handle = 0;
    Resume([&] {
        handle = shell.SHGetFileInfoA(path.c_str(), 0, &record,
                                      iconSize == 16 ? kSmallIconFlags : kLargeIconFlags);
    });
    // The whole 260-character field, whether or not the call succeeded: the
    // name, its NUL and whatever earlier, longer names left behind it.
    Resume([&] { displayName.assign(record.displayName, sizeof record.displayName); });
    if (handle == 0) return 0;
    if (iconSize != 0) {
        Resume([&] { Need(picture); picture->Height = iconSize * 20; });
        Resume([&] { Need(picture); picture->Width = iconSize * 20; });
    }
    Resume([&] { Need(picture); picture->hasPicture = false; });
    Resume([&] {
        Need(picture);
        picture->picture = IconImage{handle, record.iIcon, iconSize != 16};
        picture->hasPicture = true;
    });
    Resume([&] {
        Need(imageList);
        Need(picture);
        result = imageList->Add(picture->picture);
    });
    return result;
}

void refreshCheckBox(ItemList& list, std::string& lbltotalitem, std::string& lblactiveitem,
                     const std::function<void()>& ListView1_Click) {
    long active = 0;
    long count = 0;
    Resume([&] { count = list.Count(); });
    for (long i = 1; i <= count; ++i) {
        Resume([&] {
            ItemRow& row = list(i);
            if (row.SmallIcon == 0 || row.SubItems(1).empty()) {
                row.SmallIcon = 1;
                row.SubItems(1) = kFileNotFound;
            }
        });
        Resume([&] {
            ItemRow& row = list(i);
            if (row.SubItems(2) == "Yes") {
                row.Checked = true;
                ++active;
            } else {
                row.Checked = false;
            }
        });
    }
    Resume([&] {
        if (list.Count() != 0) list.Select(list(1));
    });
    Resume([&] { ListView1_Click(); });
    Resume([&] { lbltotalitem = "Total  Item(s) :      " + vb::CStr(list.Count()); });
    Resume([&] { lblactiveitem = "Active Item(s):      " + vb::CStr(active); });
}

}  // namespace tessmark::discovery
