// What the dialog looks like: its controls, their places, texts and order.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>
#include <uxtheme.h>

#include <bit>
#include <string>
#include <vector>

#include "plugin/activation_context_max.h"
#include "tests/dialog/dialog_driver.h"

namespace velinor {
namespace {

enum class Kind { defaultButton, button, group, label, checkBox, number, path };

// One control, with its place in dialog units.
struct Control {
    int id;  // 0: nothing asks for it
    Kind kind;
    std::wstring text;
    LONG left;
    LONG top;
    LONG width;
    LONG height;
    bool isDisabled = false;
};

// In the order of the tab key.
const std::vector<Control>& controls() {
    static const std::vector<Control> table{
        {1, Kind::defaultButton, L"OK", 48, 180, 50, 14},
        {2, Kind::button, L"Cancel", 103, 180, 50, 14},
        {0, Kind::group, L"Selective export control", 7, 7, 193, 48},
        {1001, Kind::checkBox, L"Selection only", 19, 21, 60, 10},
        {1014, Kind::checkBox, L"Export hidden", 19, 35, 61, 10},
        {0, Kind::group, L"Environment and reflection", 7, 59, 194, 105},
        {0, Kind::label, L"Ambient light color:", 20, 76, 62, 8},
        {1024, Kind::number, L"0.2", 105, 73, 27, 14},
        {1025, Kind::number, L"0.2", 133, 73, 27, 14},
        {1026, Kind::number, L"0.2", 161, 73, 27, 14},
        {0, Kind::label, L"Custom environment map:", 19, 89, 85, 8},
        {1029, Kind::path, L"", 19, 103, 122, 14},
        {1027, Kind::button, L"Browse...", 146, 103, 44, 14},
        {0, Kind::label, L"Custom reflection map:", 19, 123, 75, 8},
        {1031, Kind::path, L"", 19, 137, 122, 14},
        {1028, Kind::button, L"Browse...", 146, 137, 44, 14},
        {0, Kind::group, L"Features", 210, 7, 193, 187},
        {1022, Kind::checkBox, L"Geometry", 222, 21, 47, 8, true},
        {1015, Kind::checkBox, L"Bones", 222, 33, 35, 10, true},
        {1016, Kind::checkBox, L"Animation", 222, 46, 47, 10, true},
        {1017, Kind::checkBox, L"Materials", 222, 58, 45, 10},
        {1018, Kind::checkBox, L"Lights", 222, 72, 35, 10},
        {1019, Kind::checkBox, L"Helper lights", 232, 85, 55, 10},
        {1021, Kind::number, L"0", 299, 82, 40, 14},
        {0, Kind::label, L"%", 342, 85, 8, 8},
        {1023, Kind::checkBox, L"Webtables", 222, 98, 50, 10},
        {1020, Kind::checkBox, L"Camera", 222, 111, 41, 10},
        {1033, Kind::checkBox, L"Generate physical meshes", 222, 124, 99, 10},
        {0, Kind::label, L"Fallback quality setting (0-5):", 233, 138, 94, 8},
        {1030, Kind::number, L"3", 333, 135, 40, 14},
        {1035, Kind::checkBox, L"Auto-params", 232, 149, 57, 10},
        {0, Kind::label, L"Polycount goal:", 243, 162, 50, 8},
        {1034, Kind::number, L"200", 297, 160, 75, 14},
        {1032, Kind::checkBox, L"Clean export folder", 222, 178, 78, 10},
    };
    return table;
}

std::wstring classOf(Kind kind) {
    if (kind == Kind::label) return L"Static";
    return kind == Kind::number || kind == Kind::path ? L"Edit" : L"Button";
}

LONG_PTR buttonTypeOf(Kind kind) {
    if (kind == Kind::defaultButton) return BS_DEFPUSHBUTTON;
    if (kind == Kind::checkBox) return BS_AUTOCHECKBOX;
    return kind == Kind::group ? BS_GROUPBOX : BS_PUSHBUTTON;
}

bool isTabStop(Kind kind) {
    return kind != Kind::label && kind != Kind::group;
}

std::string name(const Control& control) {
    return std::to_string(control.id) + " " + testing::PrintToString(control.text);
}

RECT placeIn(HWND dialog, HWND child) {
    RECT place{};
    GetWindowRect(child, &place);
    MapWindowPoints(HWND_DESKTOP, dialog, std::bit_cast<POINT*>(&place), 2);
    return place;
}

// Measures of texts in a control's own font.
SIZE textSize(HWND control) {
    HDC context = GetDC(control);
    HGDIOBJ font = std::bit_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
    HGDIOBJ before = SelectObject(context, font);
    RECT area{};
    DrawTextW(context, windowText(control).c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(context, before);
    ReleaseDC(control, context);
    return {area.right, area.bottom};
}

class DialogLayout : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(children.size(), controls().size()); }

    LONG_PTR style(HWND window) const { return GetWindowLongPtrW(window, GWL_STYLE); }

    ExportSettings settings;
    DrivenDialog dialog{settings};
    std::vector<HWND> children = childrenOf(dialog.window());
};

TEST_F(DialogLayout, HasTheControlsInTheOrderOfTheTabKey) {
    for (std::size_t i = 0; i < children.size(); ++i) {
        const Control& expected = controls()[i];
        const int id = GetDlgCtrlID(children[i]);
        EXPECT_EQ(expected.id == 0 ? static_cast<WORD>(id) : id, expected.id == 0 ? 0xFFFF : expected.id)
            << name(expected);
        EXPECT_EQ(className(children[i]), classOf(expected.kind)) << name(expected);
        EXPECT_EQ(windowText(children[i]), expected.text) << name(expected);
        EXPECT_EQ(IsWindowEnabled(children[i]) == FALSE, expected.isDisabled) << name(expected);
        EXPECT_TRUE(IsWindowVisible(children[i])) << name(expected);
    }
}

TEST_F(DialogLayout, HasTheStylesOfItsControls) {
    for (std::size_t i = 0; i < children.size(); ++i) {
        const Control& expected = controls()[i];
        const LONG_PTR found = style(children[i]);
        EXPECT_EQ((found & WS_TABSTOP) != 0, isTabStop(expected.kind)) << name(expected);
        if (classOf(expected.kind) == L"Button") {
            EXPECT_EQ(found & BS_TYPEMASK, buttonTypeOf(expected.kind)) << name(expected);
        }
        if (classOf(expected.kind) == L"Edit") {
            EXPECT_EQ((found & ES_NUMBER) != 0, expected.kind == Kind::number) << name(expected);
            EXPECT_NE(found & ES_AUTOHSCROLL, 0) << name(expected);
            EXPECT_EQ(found & (ES_MULTILINE | ES_READONLY), 0) << name(expected);
        }
    }
}

TEST_F(DialogLayout, PlacesItsControlsInDialogUnits) {
    for (std::size_t i = 0; i < children.size(); ++i) {
        const Control& expected = controls()[i];
        RECT units{expected.left, expected.top, expected.width, expected.height};
        ASSERT_TRUE(MapDialogRect(dialog.window(), &units));
        const RECT found = placeIn(dialog.window(), children[i]);
        EXPECT_EQ(found.left, units.left) << name(expected);
        EXPECT_EQ(found.top, units.top) << name(expected);
        EXPECT_EQ(found.right - found.left, units.right) << name(expected);
        EXPECT_EQ(found.bottom - found.top, units.bottom) << name(expected);
    }
}

TEST_F(DialogLayout, HasItsSize) {
    RECT units{0, 0, 410, 201};
    ASSERT_TRUE(MapDialogRect(dialog.window(), &units));
    RECT client{};
    GetClientRect(dialog.window(), &client);
    EXPECT_EQ(client.right, units.right);
    EXPECT_EQ(client.bottom, units.bottom);
}

TEST_F(DialogLayout, HasTitleBarAndCloseButton) {
    const LONG_PTR found = style(dialog.window());
    EXPECT_EQ(found & (WS_POPUP | WS_CAPTION | WS_SYSMENU),
              static_cast<LONG_PTR>(WS_POPUP | WS_CAPTION | WS_SYSMENU));
    EXPECT_EQ(found & (WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX), 0);
    EXPECT_EQ(dialog.title(), L"Velinor export v 1.63");
}

TEST_F(DialogLayout, IsWrittenInTheDialogFont) {
    const LRESULT font = SendMessageW(dialog.window(), WM_GETFONT, 0, 0);
    for (HWND child : children)
        EXPECT_EQ(SendMessageW(child, WM_GETFONT, 0, 0), font) << GetDlgCtrlID(child);
    LOGFONTW description{};
    ASSERT_NE(GetObjectW(std::bit_cast<HGDIOBJ>(font), sizeof description, &description), 0);
    EXPECT_EQ(std::wstring(description.lfFaceName), L"MS Shell Dlg");
    EXPECT_EQ(description.lfWeight, FW_NORMAL);
    HDC screen = GetDC(nullptr);
    EXPECT_EQ(description.lfHeight, -MulDiv(8, GetDeviceCaps(screen, LOGPIXELSY), 72));
    ReleaseDC(nullptr, screen);
}

TEST_F(DialogLayout, ShowsItsTextsWhole) {
    for (std::size_t i = 0; i < children.size(); ++i) {
        const Control& control = controls()[i];
        RECT client{};
        GetClientRect(children[i], &client);
        const SIZE text = textSize(children[i]);
        EXPECT_GT(client.right, 0);
        LONG taken = 0;
        if (control.kind == Kind::checkBox) {
            // As wide as the button itself finds right, with its box.
            SIZE ideal{};
            ASSERT_TRUE(SendMessageW(children[i], BCM_GETIDEALSIZE, 0, std::bit_cast<LPARAM>(&ideal)));
            ASSERT_GT(ideal.cx, text.cx) << name(control);
            taken = ideal.cx - text.cx;
        }
        EXPECT_LE(text.cx + taken, client.right) << name(control);
        EXPECT_LE(text.cy, client.bottom) << name(control);
    }
}

TEST_F(DialogLayout, KeepsItsControlsApart) {
    RECT client{};
    GetClientRect(dialog.window(), &client);
    for (std::size_t i = 0; i < children.size(); ++i) {
        const RECT place = placeIn(dialog.window(), children[i]);
        RECT both{};
        UnionRect(&both, &place, &client);
        EXPECT_TRUE(EqualRect(&both, &client)) << name(controls()[i]) << " sticks out";
        for (std::size_t k = 0; k < i; ++k) {
            if (controls()[i].kind == Kind::group || controls()[k].kind == Kind::group) continue;
            const RECT other = placeIn(dialog.window(), children[k]);
            EXPECT_FALSE(IntersectRect(&both, &place, &other))
                << name(controls()[i]) << " covers " << name(controls()[k]);
        }
    }
}

TEST_F(DialogLayout, HasThemedControls) {
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (controls()[i].kind == Kind::label) continue;
        EXPECT_NE(GetWindowTheme(children[i]), nullptr) << name(controls()[i]);
    }
}

TEST_F(DialogLayout, LetsTheTabKeyGoRound) {
    ASSERT_TRUE(waitUntil([&] { return dialog.focused() != nullptr; }));
    ASSERT_EQ(dialog.focused(), dialog.item(ControlId::ok)) << "OK has the keyboard first";
    std::vector<int> expected;
    for (const Control& control : controls()) {
        if (isTabStop(control.kind) && !control.isDisabled) expected.push_back(control.id);
    }
    expected.push_back(1);
    std::vector<int> visited{GetDlgCtrlID(dialog.focused())};
    while (visited.size() < expected.size()) {
        HWND before = dialog.focused();
        dialog.press(VK_TAB);
        ASSERT_TRUE(waitUntil([&] { return dialog.focused() != before && dialog.focused() != nullptr; }));
        visited.push_back(GetDlgCtrlID(dialog.focused()));
    }
    EXPECT_EQ(visited, expected);
}

TEST(ActivationContext, GivesWindowsTheNewControlsWhileItLives) {
    const auto isThemed = [] {
        HWND button =
            CreateWindowExW(0, L"Button", L"", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr);
        EXPECT_NE(button, nullptr);
        const bool isNew = GetWindowTheme(button) != nullptr;
        DestroyWindow(button);
        return isNew;
    };
    EXPECT_FALSE(isThemed());
    {
        const ActivationContext context(GetModuleHandleW(nullptr));
        EXPECT_TRUE(isThemed());
    }
    EXPECT_FALSE(isThemed());
}

TEST(ActivationContext, DoesNothingForAModuleWithoutManifest) {
    HMODULE library = GetModuleHandleW(L"kernel32.dll");
    ASSERT_NE(library, nullptr);
    ASSERT_EQ(FindResourceW(library, MAKEINTRESOURCEW(2), MAKEINTRESOURCEW(24)), nullptr);
    HANDLE before = nullptr;
    HANDLE within = nullptr;
    ASSERT_TRUE(GetCurrentActCtx(&before));
    {
        const ActivationContext context(library);
        ASSERT_TRUE(GetCurrentActCtx(&within));
    }
    EXPECT_EQ(within, before);
}

}  // namespace
}  // namespace velinor
