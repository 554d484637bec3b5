#include "win32/app/splitter.h"

namespace tessmark::app {

Splitter::Splitter(HWND parent, int id, Axis axis, HBRUSH background, std::function<void(int)> moved)
    : axis_(axis),
      moved_(std::move(moved)),
      bar_(parent, id, background, LoadCursor(nullptr, axis == Axis::Horizontal ? IDC_SIZEWE : IDC_SIZENS)) {
    bar_.onMouse = [this](UINT message, POINT point) { Mouse(message, point); };
}

void Splitter::Mouse(UINT message, POINT point) {
    const int along = axis_ == Axis::Horizontal ? point.x : point.y;
    switch (message) {
    case WM_LBUTTONDOWN:
        grip_ = along;
        dragging_ = true;
        SetCapture(bar_.hwnd());
        break;
    case WM_MOUSEMOVE:
        if (dragging_) {
            MapWindowPoints(bar_.hwnd(), GetParent(bar_.hwnd()), &point, 1);
            moved_((axis_ == Axis::Horizontal ? point.x : point.y) - grip_);
        }
        break;
    case WM_LBUTTONUP:
        dragging_ = false;
        ReleaseCapture();
        break;
    default:
        break;
    }
}

}  // namespace tessmark::app
