// What the controls of the opened dialog do to each other.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "tests/dialog/dialog_driver.h"

namespace velinor {
namespace {

const std::vector<ControlId> kCheckBoxes{
    ControlId::selectionOnly,    ControlId::exportHidden,           ControlId::exportBones,
    ControlId::exportAnimation,  ControlId::exportMaterials,        ControlId::exportLights,
    ControlId::helperLights,     ControlId::exportGeometry,         ControlId::exportCamera,
    ControlId::exportWebtables,  ControlId::generatePhysicalMeshes, ControlId::autoParams,
    ControlId::cleanExportFolder};

class DialogCommands : public testing::Test {
  protected:
    ExportSettings settings;
    DrivenDialog dialog{settings};
};

TEST_F(DialogCommands, OpenWithTheDefaults) {
    const std::set<ControlId> unchecked{ControlId::selectionOnly, ControlId::exportHidden,
                                        ControlId::exportBones, ControlId::exportAnimation};
    const std::set<ControlId> disabled{ControlId::exportGeometry, ControlId::exportBones,
                                       ControlId::exportAnimation};
    for (const ControlId box : kCheckBoxes)
        EXPECT_EQ(dialog.isChecked(box), !unchecked.contains(box)) << static_cast<int>(box);
    for (int id = 1001; id <= 1035; ++id) {
        if (id > 1001 && id < 1014) continue;
        const auto control = static_cast<ControlId>(id);
        ASSERT_NE(dialog.item(control), nullptr) << id;
        EXPECT_EQ(dialog.isEnabled(control), !disabled.contains(control)) << id;
    }
    EXPECT_EQ(dialog.text(ControlId::helperLightPercent), L"0") << "the default 0.8 is cut to a whole number";
    EXPECT_EQ(dialog.text(ControlId::environmentMap), L"");
    EXPECT_EQ(dialog.text(ControlId::reflectionMap), L"");
}

TEST_F(DialogCommands, SwitchingLightsOffTakesHelperLightsAlong) {
    dialog.click(ControlId::exportLights);
    EXPECT_FALSE(dialog.isChecked(ControlId::exportLights));
    EXPECT_FALSE(dialog.isChecked(ControlId::helperLights));
    EXPECT_FALSE(dialog.isEnabled(ControlId::helperLights));
    EXPECT_FALSE(dialog.isEnabled(ControlId::helperLightPercent));

    dialog.click(ControlId::exportLights);
    EXPECT_TRUE(dialog.isChecked(ControlId::exportLights));
    EXPECT_FALSE(dialog.isChecked(ControlId::helperLights)) << "stays off";
    EXPECT_TRUE(dialog.isEnabled(ControlId::helperLights));
    EXPECT_FALSE(dialog.isEnabled(ControlId::helperLightPercent)) << "waits for the helper lights";

    dialog.click(ControlId::helperLights);
    EXPECT_TRUE(dialog.isChecked(ControlId::helperLights));
    EXPECT_TRUE(dialog.isEnabled(ControlId::helperLightPercent));
}

TEST_F(DialogCommands, HelperLightsGoWithTheirPercentage) {
    dialog.click(ControlId::helperLights);
    EXPECT_FALSE(dialog.isChecked(ControlId::helperLights));
    EXPECT_TRUE(dialog.isEnabled(ControlId::helperLights));
    EXPECT_FALSE(dialog.isEnabled(ControlId::helperLightPercent));
    dialog.click(ControlId::helperLights);
    EXPECT_TRUE(dialog.isEnabled(ControlId::helperLightPercent));
}

TEST_F(DialogCommands, SwitchingPhysicalMeshesOffTakesTheirOptionsAlong) {
    dialog.click(ControlId::generatePhysicalMeshes);
    EXPECT_FALSE(dialog.isChecked(ControlId::generatePhysicalMeshes));
    EXPECT_FALSE(dialog.isChecked(ControlId::autoParams));
    for (const ControlId control :
         {ControlId::fallbackQuality, ControlId::autoParams, ControlId::polycountGoal})
        EXPECT_FALSE(dialog.isEnabled(control)) << static_cast<int>(control);

    dialog.click(ControlId::generatePhysicalMeshes);
    EXPECT_TRUE(dialog.isEnabled(ControlId::fallbackQuality));
    EXPECT_TRUE(dialog.isEnabled(ControlId::autoParams));
    EXPECT_FALSE(dialog.isChecked(ControlId::autoParams));
    EXPECT_FALSE(dialog.isEnabled(ControlId::polycountGoal)) << "waits for the auto-params";

    dialog.click(ControlId::autoParams);
    EXPECT_TRUE(dialog.isEnabled(ControlId::polycountGoal));
    dialog.click(ControlId::autoParams);
    EXPECT_FALSE(dialog.isEnabled(ControlId::polycountGoal));
    EXPECT_TRUE(dialog.isEnabled(ControlId::fallbackQuality));
}

TEST_F(DialogCommands, OtherCheckBoxesChangeNothingElse) {
    for (const ControlId clicked :
         {ControlId::selectionOnly, ControlId::exportHidden, ControlId::exportMaterials,
          ControlId::exportCamera, ControlId::exportWebtables, ControlId::cleanExportFolder}) {
        std::vector<bool> before;
        for (const ControlId box : kCheckBoxes) {
            before.push_back(box == clicked ? !dialog.isChecked(box) : dialog.isChecked(box));
            before.push_back(dialog.isEnabled(box));
        }
        dialog.click(clicked);
        std::vector<bool> after;
        for (const ControlId box : kCheckBoxes) {
            after.push_back(dialog.isChecked(box));
            after.push_back(dialog.isEnabled(box));
        }
        EXPECT_EQ(after, before) << static_cast<int>(clicked);
    }
}

TEST_F(DialogCommands, SpaceClicksTheBoxThatHasTheKeyboard) {
    dialog.press(VK_TAB);
    dialog.press(VK_TAB);
    ASSERT_TRUE(waitUntil([&] { return dialog.focused() == dialog.item(ControlId::selectionOnly); }));
    dialog.press(VK_SPACE);
    EXPECT_TRUE(waitUntil([&] { return dialog.isChecked(ControlId::selectionOnly); }));
}

TEST_F(DialogCommands, TabPassesDisabledControls) {
    dialog.click(ControlId::exportLights);
    SendMessageW(dialog.window(), WM_NEXTDLGCTL,
                 reinterpret_cast<WPARAM>(dialog.item(ControlId::exportLights)), TRUE);
    ASSERT_TRUE(waitUntil([&] { return dialog.focused() == dialog.item(ControlId::exportLights); }));
    dialog.press(VK_TAB);
    EXPECT_TRUE(waitUntil([&] { return dialog.focused() == dialog.item(ControlId::exportWebtables); }));
}

TEST_F(DialogCommands, NumberFieldsTakeDigitsFromTheKeyboard) {
    for (const ControlId edit :
         {ControlId::helperLightPercent, ControlId::fallbackQuality, ControlId::polycountGoal,
          ControlId::ambientRed, ControlId::ambientGreen, ControlId::ambientBlue}) {
        dialog.type(edit, L"-1a2.");
        EXPECT_EQ(dialog.text(edit), L"12") << static_cast<int>(edit);
    }
    for (const ControlId edit : {ControlId::environmentMap, ControlId::reflectionMap}) {
        dialog.type(edit, L"-1a2.");
        EXPECT_EQ(dialog.text(edit), L"-1a2.") << static_cast<int>(edit);
    }
}

// Puts `text` where the paste command takes it from.
void copyText(const std::wstring& text) {
    ASSERT_TRUE(waitUntil([] { return OpenClipboard(nullptr) != FALSE; }));
    EmptyClipboard();
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    ASSERT_NE(memory, nullptr);
    std::memcpy(GlobalLock(memory), text.c_str(), size);
    GlobalUnlock(memory);
    EXPECT_NE(SetClipboardData(CF_UNICODETEXT, memory), nullptr);
    CloseClipboard();
}

TEST_F(DialogCommands, NumberFieldsTakeAnythingThatIsPasted) {
    const auto paste = [&](ControlId edit, const std::wstring& text) {
        copyText(text);
        SendMessageW(dialog.item(edit), EM_SETSEL, 0, -1);
        SendMessageW(dialog.item(edit), WM_PASTE, 0, 0);
        EXPECT_EQ(dialog.text(edit), text);
    };
    paste(ControlId::ambientRed, L"-0.75");
    paste(ControlId::helperLightPercent, L"12.5");
    paste(ControlId::fallbackQuality, L"-2");
    dialog.click(ControlId::ok);
    EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
    EXPECT_EQ(settings.ambientRed, -0.75F);
    EXPECT_EQ(settings.helperLightFraction, 0.125F);
    EXPECT_EQ(settings.fallbackQuality, 0);
}

TEST_F(DialogCommands, EditsTakeLongTexts) {
    const std::wstring longText(40000, L'x');
    for (const ControlId edit : {ControlId::reflectionMap, ControlId::polycountGoal}) {
        SendMessageW(dialog.item(edit), EM_SETSEL, 0, -1);
        SendMessageW(dialog.item(edit), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(longText.c_str()));
        SendMessageW(dialog.item(edit), EM_SETSEL, 40000, 40000);
        SendMessageW(dialog.item(edit), WM_CHAR, L'7', 1);
        EXPECT_EQ(dialog.text(edit), longText + L'7') << static_cast<int>(edit);
    }
    dialog.setText(ControlId::polycountGoal, std::wstring(40000, L'0') + L'7');
    dialog.click(ControlId::ok);
    EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
    EXPECT_EQ(settings.polycountGoal, 7);
    EXPECT_EQ(settings.customReflectionMap, "default.dds");
}

TEST_F(DialogCommands, TakeChecksThatCameWithoutAClick) {
    SendMessageW(dialog.item(ControlId::exportCamera), BM_SETCHECK, BST_UNCHECKED, 0);
    SendMessageW(dialog.item(ControlId::exportBones), BM_SETCHECK, BST_CHECKED, 0);
    dialog.click(ControlId::exportMaterials);
    EXPECT_FALSE(dialog.isChecked(ControlId::exportCamera)) << "another command leaves it as it is";
    dialog.click(ControlId::ok);
    EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
    EXPECT_FALSE(settings.exportCamera);
    EXPECT_TRUE(settings.exportBones);
    EXPECT_FALSE(settings.exportMaterials);
}

TEST_F(DialogCommands, KeepsTheCursorOfEditsWhileOtherControlsAreUsed) {
    dialog.setText(ControlId::environmentMap, L"C:\\sky.dds");
    SendMessageW(dialog.item(ControlId::environmentMap), EM_SETSEL, 3, 6);
    dialog.click(ControlId::exportLights);
    EXPECT_EQ(SendMessageW(dialog.item(ControlId::environmentMap), EM_GETSEL, 0, 0), MAKELONG(3, 6));
    EXPECT_EQ(dialog.text(ControlId::environmentMap), L"C:\\sky.dds");
}

}  // namespace
}  // namespace velinor
