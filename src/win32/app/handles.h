#pragma once
// Owners for the GDI objects, icons and image lists the views create.
#include <windows.h>
#include <commctrl.h>

#include <memory>
#include <type_traits>

namespace tessmark::app {

struct GdiObjectDeleter {
    void operator()(void* object) const { DeleteObject(static_cast<HGDIOBJ>(object)); }
};
struct IconDeleter {
    void operator()(HICON icon) const { DestroyIcon(icon); }
};
struct DcDeleter {
    void operator()(HDC dc) const { DeleteDC(dc); }
};
struct ImageListDeleter {
    void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
};

using OwnedFont = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiObjectDeleter>;
using OwnedBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, GdiObjectDeleter>;
using OwnedBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiObjectDeleter>;
using OwnedDc = std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter>;
using OwnedIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;
using OwnedImageList = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDeleter>;

}  // namespace tessmark::app
