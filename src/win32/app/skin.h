#pragma once
// The look of the caption-less windows: a painted frame with a caption strip,
// and picture boxes that play the caption buttons with resource bitmaps.
#include <windows.h>

#include <functional>
#include <memory>
#include <string>

#include "win32/app/box.h"
#include "win32/app/handles.h"

namespace tessmark::app {

inline constexpr int kCaptionStrip = 25;  // the strip a press drags the window by
inline constexpr COLORREF kBodyColour = RGB(0xE9, 0xEE, 0xF5);

OwnedFont Font(const char* face, int height, int weight);
inline OwnedFont Tahoma(int height, int weight) { return Font("Tahoma", height, weight); }

void FillSolid(HDC dc, const RECT& area, COLORREF colour);
// The body and the shaded caption strip of a client area.
void PaintBody(HDC dc, const RECT& client);
// The thin frame around a client area.
void PaintFrame(HDC dc, const RECT& client);
// The body, the caption strip with the small icon and the caption, and the frame.
void PaintSkin(HWND window, HDC dc, HICON icon, HFONT captionFont, const std::string& caption);

// The mouse on a skinned form's body, the one capture handler of every form: a
// press holds the mouse until the button goes up, so that a release over a
// caption button pressed elsewhere is the form's, and goes on as the form's
// Form_MouseDown (y in twips); a move goes on as its Form_MouseMove. False for
// any other message.
bool FormMouse(HWND window, UINT message, LPARAM lParam, const std::function<void(int button, int y)>& down,
               const std::function<void()>& move);

// A caption button: its bitmap is loaded by resource name when the name changes.
class CaptionButton {
public:
    struct Handlers {
        std::function<void(int button)> down;
        std::function<void()> move;
        std::function<void(int button)> up;
    };
    // A pressed button keeps the mouse until the button goes up, wherever that happens.
    CaptionButton(HWND parent, int id, HBRUSH background, Handlers handlers);

    HWND hwnd() const { return box_->hwnd(); }
    void Sync(const std::string& name);

private:
    std::unique_ptr<Box> box_;
    std::string name_;
    OwnedBitmap bitmap_;
};

}  // namespace tessmark::app
