// Renders the progress bar control in every style at a few values, with its
// caption, into one 24-bit BMP: one row per style (and one for the turned
// standard bar), one column per value. Usage: tessmark_render_progress out.bmp
#include <windows.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "win32/app/XP_ProgressBar.h"

namespace {

constexpr int kBarWidth = 150;
constexpr int kBarHeight = 22;
constexpr int kTallHeight = 60;
constexpr int kLabelWidth = 90;
constexpr int kCell = 8;
constexpr int kValues[] = {0, 45, 100, 130};

bool WriteBmp(const char* path, HDC dc, HBITMAP bitmap, int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    const int stride = (width * 3 + 3) & ~3;
    std::vector<unsigned char> pixels(static_cast<std::size_t>(stride) * height);
    if (!GetDIBits(dc, bitmap, 0, height, pixels.data(), &info, DIB_RGB_COLORS)) return false;
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof info.bmiHeader;
    file.bfSize = file.bfOffBits + static_cast<DWORD>(pixels.size());
    std::FILE* out = std::fopen(path, "wb");
    if (!out) return false;
    std::fwrite(&file, sizeof file, 1, out);
    std::fwrite(&info.bmiHeader, sizeof info.bmiHeader, 1, out);
    std::fwrite(pixels.data(), 1, pixels.size(), out);
    return std::fclose(out) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    using tessmark::app::XP_ProgressBar;
    const char* path = argc > 1 ? argv[1] : "progress.bmp";
    HINSTANCE instance = GetModuleHandleA(nullptr);
    HWND parent = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 800, 800, nullptr, nullptr, instance, nullptr);

    // A checker of two colours for the picture style.
    const WORD checker[8] = {0xF0, 0xF0, 0xF0, 0xF0, 0x0F, 0x0F, 0x0F, 0x0F};
    HBITMAP pattern = CreateBitmap(8, 8, 1, 1, checker);

    struct Row { std::string label; int scrolling; int orientation; int height; };
    std::vector<Row> rows;
    for (int style = 0; style <= 9; ++style) rows.push_back({"Scrolling " + std::to_string(style), style, 0, kBarHeight});
    rows.push_back({"0, turned", 0, 1, kTallHeight});

    const int columns = static_cast<int>(std::size(kValues));
    const int width = kLabelWidth + columns * (kBarWidth + kCell) + kCell;
    int height = kCell;
    for (const Row& row : rows) height += row.height + kCell;

    HDC screen = GetDC(nullptr);
    HDC sheet = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    HGDIOBJ previous = SelectObject(sheet, bitmap);
    RECT all{0, 0, width, height};
    FillRect(sheet, &all, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
    SetBkMode(sheet, TRANSPARENT);

    int y = kCell;
    for (const Row& row : rows) {
        RECT label{4, y, kLabelWidth, y + row.height};
        DrawTextA(sheet, row.label.c_str(), -1, &label, DT_SINGLELINE | DT_VCENTER);
        for (int column = 0; column < columns; ++column) {
            const int barWidth = row.orientation ? kBarHeight : kBarWidth;
            XP_ProgressBar bar(instance, parent, 0, 0, barWidth, row.height);
            bar.Scrolling(row.scrolling);
            bar.Orientation(row.orientation);
            if (row.scrolling == 8) bar.Image(pattern);
            bar.ShowText(true);
            bar.Value(kValues[column]);
            bar.pDraw(sheet, 0, 0, barWidth, row.height, kLabelWidth + column * (kBarWidth + kCell), y);
        }
        y += row.height + kCell;
    }

    SelectObject(sheet, previous);  // GetDIBits wants the bitmap free
    const bool written = WriteBmp(path, screen, bitmap, width, height);
    DeleteObject(bitmap);
    DeleteDC(sheet);
    ReleaseDC(nullptr, screen);
    DeleteObject(pattern);
    DestroyWindow(parent);
    std::printf("%s %s (%dx%d)\n", written ? "wrote" : "could not write", path, width, height);
    return written ? 0 : 1;
}
