#pragma once
// Pictures of the row and panel icons the shell gave the logic.
#include "discovery/ItemList.h"
#include "win32/app/handles.h"

namespace tessmark::app {

// The picture of one image: an icon resource of the program when the image
// names no image list (its index is then the resource number), otherwise that
// image of the shell's image list. Null when there is no such picture.
OwnedIcon IconOf(const discovery::IconImage& image, int size);

}  // namespace tessmark::app
