// Draws the options dialog in the states that docs/options.md shows: options_pictures FOLDER. Each picture is
// a bitmap file; scripts/screenshots makes PNG files of them.
#include <windows.h>

#include <bit>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "platform/code_page.h"
#include "tests/dialog/dialog_driver.h"

namespace velinor {
namespace {

constexpr int kBytesPerPixel = 4;

struct Picture {
    LONG width = 0;
    LONG height = 0;
    std::vector<char> pixels;  // rows from the bottom up, 32 bits each

    bool operator==(const Picture& other) const = default;
};

BITMAPINFOHEADER headerOf(LONG width, LONG height) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = 8 * kBytesPerPixel;
    header.biCompression = BI_RGB;
    return header;
}

// The window as it is on the screen, with its title bar.
Picture pictureOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    Picture picture{place.right - place.left, place.bottom - place.top, {}};
    BITMAPINFO info{};
    info.bmiHeader = headerOf(picture.width, picture.height);
    HDC source = GetWindowDC(window);
    HDC copy = CreateCompatibleDC(source);
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(copy, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ before = SelectObject(copy, bitmap);
    BitBlt(copy, 0, 0, picture.width, picture.height, source, 0, 0, SRCCOPY);
    GdiFlush();
    const char* first = static_cast<const char*>(bits);
    picture.pixels.assign(first, first + std::size_t{kBytesPerPixel} * picture.width * picture.height);
    SelectObject(copy, before);
    DeleteObject(bitmap);
    DeleteDC(copy);
    ReleaseDC(window, source);
    return picture;
}

// A window is drawn piece by piece: the picture that stays the same for a while is the finished one.
Picture finishedPictureOf(HWND window) {
    constexpr int kEqualPictures = 20;
    Picture last;
    int equal = 0;
    waitUntil([&] {
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        Picture now = pictureOf(window);
        equal = now == last ? equal + 1 : 0;
        last = std::move(now);
        return equal == kEqualPictures;
    });
    if (equal < kEqualPictures) throw std::runtime_error("the dialog never stops changing");
    return last;
}

void writeBitmap(const std::filesystem::path& path, const Picture& picture) {
    BITMAPFILEHEADER file{};
    const BITMAPINFOHEADER header = headerOf(picture.width, picture.height);
    file.bfType = 0x4D42;  // "BM"
    file.bfOffBits = sizeof file + sizeof header;
    file.bfSize = file.bfOffBits + static_cast<DWORD>(picture.pixels.size());
    std::ofstream out(path, std::ios::binary);
    out.write(std::bit_cast<const char*>(&file), sizeof file);
    out.write(std::bit_cast<const char*>(&header), sizeof header);
    out.write(picture.pixels.data(), static_cast<std::streamsize>(picture.pixels.size()));
    out.close();
    if (!out) throw std::runtime_error("cannot write a picture");
}

struct State {
    const char* name;
    std::function<void(const DrivenDialog&)> reach;
};

const std::vector<State>& states() {
    static const std::vector<State> list{
        {"opened", [](const DrivenDialog&) {}},
        {"lights-off", [](const DrivenDialog& dialog) { dialog.click(ControlId::exportLights); }},
        {"physical-meshes-off",
         [](const DrivenDialog& dialog) { dialog.click(ControlId::generatePhysicalMeshes); }},
        {"custom",
         [](const DrivenDialog& dialog) {
             dialog.click(ControlId::selectionOnly);
             dialog.setText(ControlId::ambientRed, L"0.35");
             dialog.setText(ControlId::ambientGreen, L"0.3");
             dialog.setText(ControlId::ambientBlue, L"0.25");
             dialog.setText(ControlId::environmentMap, L"C:\\maps\\evening.dds");
             dialog.setText(ControlId::reflectionMap, L"C:\\maps\\hall.dds");
             dialog.setText(ControlId::helperLightPercent, L"80");
             dialog.setText(ControlId::fallbackQuality, L"5");
             dialog.setText(ControlId::polycountGoal, L"500");
         }},
    };
    return list;
}

void draw(const std::filesystem::path& folder) {
    for (const State& state : states()) {
        ExportSettings settings;
        OpeningOptions options;
        options.owner = std::nullopt;
        const DrivenDialog dialog(settings, options);
        if (!waitUntil([&] { return dialog.focused() == dialog.item(ControlId::ok); }))
            throw std::runtime_error("the dialog does not get the keyboard");
        // The colours of the active window, whatever else is on the screen.
        SendMessageW(dialog.window(), WM_NCACTIVATE, TRUE, 0);
        state.reach(dialog);
        writeBitmap(folder / (std::string("options-") + state.name + ".bmp"),
                    finishedPictureOf(dialog.window()));
    }
}

}  // namespace
}  // namespace velinor

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::fputs("usage: options_pictures FOLDER\n", stderr);
        return 2;
    }
    try {
        velinor::draw(velinor::toPath(velinor::wideText(arguments[1])));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "options_pictures: %s\n", error.what());
        return 3;
    }
}
