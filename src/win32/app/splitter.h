#pragma once
// A movable divider: a thin bar that the mouse drags along one axis. It only
// reports where it was dragged to; the form places it and its neighbours.
#include <functional>

#include "win32/app/box.h"

namespace tessmark::app {

class Splitter {
public:
    enum class Axis { Horizontal, Vertical };  // the direction the bar moves in

    // moved: the bar's new left (horizontal) or top (vertical) edge in the parent's coordinates.
    Splitter(HWND parent, int id, Axis axis, HBRUSH background, std::function<void(int)> moved);

    HWND hwnd() const { return bar_.hwnd(); }

private:
    void Mouse(UINT message, POINT point);

    Axis axis_;
    std::function<void(int)> moved_;
    Box bar_;
    int grip_ = 0;  // where in the bar the press landed
    bool dragging_ = false;
};

}  // namespace tessmark::app
