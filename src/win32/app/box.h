#pragma once
// A child window of the program's own class whose painting, mouse and size
// events go to plain functions: the picture boxes, caption buttons and drag
// bars of the main window. Notifications of the controls inside a box go on to
// the box's parent, so the form sees them all.
#include <windows.h>

#include <functional>

namespace tessmark::app {

class Box {
public:
    using Painter = std::function<void(HDC, const RECT&)>;
    // A mouse message of the box, with the point in the box's client coordinates.
    using MouseHandler = std::function<void(UINT message, POINT point)>;

    // background: the brush behind the box and behind the labels inside it;
    // the caller keeps it alive.
    Box(HWND parent, int id, HBRUSH background, HCURSOR cursor = nullptr, DWORD exStyle = 0);
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;
    ~Box();

    HWND hwnd() const { return window_; }

    Painter onPaint;
    MouseHandler onMouse;
    std::function<void()> onResize;

private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    HBRUSH background_;
    HCURSOR cursor_;
};

// The mouse button of a press or release message as a flag: 1 left, 2 right, 4 middle; 0 for others.
int MouseButton(UINT message);

}  // namespace tessmark::app
