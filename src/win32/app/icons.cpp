#include "win32/app/icons.h"

namespace tessmark::app {

OwnedIcon IconOf(const discovery::IconImage& image, int size) {
    if (image.imageList == 0)
        return OwnedIcon(static_cast<HICON>(LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(image.index),
                                                       IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
    return OwnedIcon(ImageList_GetIcon(reinterpret_cast<HIMAGELIST>(image.imageList), image.index, ILD_TRANSPARENT));
}

}  // namespace tessmark::app
