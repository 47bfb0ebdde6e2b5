// The two "Browse..." buttons and the file dialog behind them.
#include <gtest/gtest.h>
#include <windows.h>

#include <commdlg.h>
#include <dlgs.h>
#include <objbase.h>
#include <shobjidl.h>

#include <array>
#include <atomic>
#include <bit>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "plugin/map_file_dialog_max.h"
#include "tests/dialog/dialog_driver.h"
#include "tests/dialog/temporary_maps.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

struct BrowseCase {
    const char* name;
    ControlId button;
    ControlId edit;
    ControlId otherEdit;
};
constexpr BrowseCase kButtons[] = {
    {"environment", ControlId::browseEnvironmentMap, ControlId::environmentMap, ControlId::reflectionMap},
    {"reflection", ControlId::browseReflectionMap, ControlId::reflectionMap, ControlId::environmentMap},
};

// A failing maker of shell dialogs, registered for the thread that asks for it.
class NoShellDialogs final : public IClassFactory {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        *object = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
        return *object == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void** object) override {
        *object = nullptr;
        ++asked;
        return E_OUTOFMEMORY;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    int asked = 0;
};

// Counts how often a thread begins and ends its use of COM.
class ComUses final : public IInitializeSpy {
  public:
    // On the thread that is meant.
    void watch() { CoRegisterInitializeSpy(this, &cookie_); }
    void stop() const { CoRevokeInitializeSpy(cookie_); }

    int begun() const { return begun_; }
    int ended() const { return ended_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        *object = id == IID_IUnknown || id == IID_IInitializeSpy ? this : nullptr;
        return *object == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE PreInitialize(DWORD, DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD, DWORD) override {
        if (SUCCEEDED(result)) ++begun_;
        return result;
    }
    HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD) override {
        ++ended_;
        return S_OK;
    }

  private:
    ULARGE_INTEGER cookie_{};
    std::atomic<int> begun_ = 0;
    std::atomic<int> ended_ = 0;
};

class DialogBrowse : public testing::Test {
  protected:
    // Presses the button and waits until its file dialog can be used.
    HWND browse(const DrivenDialog& dialog, ControlId button) {
        dialog.postClick(button);
        HWND files = dialog.awaitOwnedDialog(dialog.window());
        EXPECT_TRUE(waitUntil([&] { return nameField(files) != nullptr; }));
        EXPECT_TRUE(waitUntil([&] { return !filtersOf(files).empty(); }));
        return files;
    }

    // The field for the file's name, which has another number in the older dialog.
    static HWND nameField(HWND files) {
        HWND combined = GetDlgItem(files, cmb13);
        return combined != nullptr ? combined : GetDlgItem(files, edt1);
    }

    // What the list of file types offers.
    static std::vector<std::wstring> filtersOf(HWND files) {
        std::vector<HWND> windows;
        EnumChildWindows(
            files,
            [](HWND child, LPARAM list) -> BOOL {
                if (className(child) == L"ComboBox")
                    std::bit_cast<std::vector<HWND>*>(list)->push_back(child);
                return TRUE;
            },
            std::bit_cast<LPARAM>(&windows));
        for (HWND combo : windows) {
            std::vector<std::wstring> entries;
            const LRESULT count = SendMessageW(combo, CB_GETCOUNT, 0, 0);
            for (LRESULT i = 0; i < count; ++i) {
                std::wstring entry(static_cast<std::size_t>(SendMessageW(combo, CB_GETLBTEXTLEN, i, 0)),
                                   L'\0');
                SendMessageW(combo, CB_GETLBTEXT, i, std::bit_cast<LPARAM>(entry.data()));
                entries.push_back(entry);
            }
            if (!entries.empty() && entries.front().starts_with(L"DXT")) return entries;
        }
        return {};
    }

    static void enterName(HWND files, const std::wstring& name) {
        SendMessageW(nameField(files), WM_SETTEXT, 0, std::bit_cast<LPARAM>(name.c_str()));
        PostMessageW(files, WM_COMMAND, IDOK, 0);
    }

    static void awaitClosed(const DrivenDialog& dialog, HWND files) {
        ASSERT_TRUE(waitUntil([&] { return !IsWindow(files) && IsWindowEnabled(dialog.window()); }));
    }

    // Enters a name that no file has, and cancels after the complaint.
    void expectRefusal(const DrivenDialog& dialog, HWND files) {
        enterName(files, (maps.path() / "gone.dds").wstring());
        HWND complaint = dialog.awaitOwnedDialog(files);
        PostMessageW(complaint, WM_COMMAND, IDOK, 0);
        ASSERT_TRUE(waitUntil([&] { return !IsWindow(complaint) && IsWindowEnabled(files); }));
        EXPECT_TRUE(IsWindow(files)) << "the dialog waits for another name";
        PostMessageW(files, WM_COMMAND, IDCANCEL, 0);
        awaitClosed(dialog, files);
    }

    // What a press of the button puts into its edit when the user enters `name`.
    void expectChoice(const BrowseCase& c, const std::wstring& name, const std::wstring& expected) {
        ExportSettings settings;
        DrivenDialog dialog(settings);
        dialog.setText(c.edit, L"before");
        dialog.setText(c.otherEdit, L"other");
        HWND files = browse(dialog, c.button);
        enterName(files, name);
        awaitClosed(dialog, files);
        EXPECT_TRUE(waitUntil([&] { return dialog.text(c.edit) != L"before"; }));
        EXPECT_EQ(dialog.text(c.edit), expected) << c.name;
        EXPECT_EQ(dialog.text(c.otherEdit), L"other") << c.name;
    }

    TemporaryMaps maps;
};

TEST_F(DialogBrowse, PutsTheChosenPathIntoItsEdit) {
    const fs::path sky = maps.add(L"sky.dds");
    for (const BrowseCase& c : kButtons)
        expectChoice(c, sky.wstring(), sky.wstring());
}

TEST_F(DialogBrowse, TakesPathsBeyondAscii) {
    const fs::path sky = maps.add(L"\u043d\u0435\u0431\u043e \u65e5\u672c \u00e9.dds");
    for (const BrowseCase& c : kButtons)
        expectChoice(c, sky.wstring(), sky.wstring());
}

TEST_F(DialogBrowse, AddsTheExtensionOfMaps) {
    const fs::path sky = maps.add(L"sky.dds");
    expectChoice(kButtons[0], (maps.path() / "sky").wstring(), sky.wstring());
}

TEST_F(DialogBrowse, TakesFilesOfOtherKinds) {
    const fs::path picture = maps.add(L"picture.png");
    expectChoice(kButtons[1], picture.wstring(), picture.wstring());
}

TEST_F(DialogBrowse, CancelChangesNothing) {
    for (const BrowseCase& c : kButtons) {
        ExportSettings settings;
        DrivenDialog dialog(settings);
        dialog.setText(c.edit, L"before");
        HWND files = browse(dialog, c.button);
        PostMessageW(files, WM_COMMAND, IDCANCEL, 0);
        awaitClosed(dialog, files);
        EXPECT_EQ(dialog.text(c.edit), L"before") << c.name;
        EXPECT_EQ(dialog.text(c.otherEdit), L"") << c.name;
        EXPECT_TRUE(IsWindow(dialog.window()));
    }
}

TEST_F(DialogBrowse, IsOwnedByTheOptionsAndOffersTwoKinds) {
    ExportSettings settings;
    const DrivenDialog dialog(settings);
    HWND files = browse(dialog, ControlId::browseEnvironmentMap);
    EXPECT_EQ(GetWindow(files, GW_OWNER), dialog.window());
    EXPECT_FALSE(IsWindowEnabled(dialog.window()));
    EXPECT_EQ(filtersOf(files), (std::vector<std::wstring>{L"DXT Files (*.dds)", L"All Files (*.*)"}));
    EXPECT_EQ(windowText(nameField(files)), L"") << "no name is proposed";
    PostMessageW(files, WM_COMMAND, IDCANCEL, 0);
    awaitClosed(dialog, files);
}

TEST_F(DialogBrowse, RefusesFilesThatAreNotThere) {
    ExportSettings settings;
    DrivenDialog dialog(settings);
    HWND files = browse(dialog, ControlId::browseReflectionMap);
    expectRefusal(dialog, files);
    EXPECT_EQ(dialog.text(ControlId::reflectionMap), L"");
}

TEST_F(DialogBrowse, KeepsTheOtherControls) {
    const fs::path sky = maps.add(L"sky.dds");
    ExportSettings settings;
    DrivenDialog dialog(settings);
    dialog.click(ControlId::exportLights);
    dialog.setText(ControlId::polycountGoal, L"17");
    HWND files = browse(dialog, ControlId::browseEnvironmentMap);
    enterName(files, sky.wstring());
    awaitClosed(dialog, files);
    ASSERT_TRUE(waitUntil([&] { return dialog.text(ControlId::environmentMap) == sky.wstring(); }));
    EXPECT_FALSE(dialog.isChecked(ControlId::exportLights));
    EXPECT_EQ(dialog.text(ControlId::polycountGoal), L"17");
    dialog.click(ControlId::ok);
    EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
    EXPECT_EQ(settings.customEnvironmentMap, sky);
    EXPECT_EQ(settings.customReflectionMap, sky);
    EXPECT_EQ(settings.polycountGoal, 17);
}

TEST_F(DialogBrowse, LeavesTheWorkingFolderAndComAsTheyWere) {
    struct Case {
        const char* name;
        bool hasCom;
        DWORD model;
        int begun;  // by Browse and the file dialog; Wine's dialog begins once, and never ends that
        int ended;
    };
    const fs::path sky = maps.add(L"sky.dds");
    const fs::path before = fs::current_path();
    for (const Case& c :
         {Case{"no COM", false, 0, 2, 1}, Case{"an apartment", true, COINIT_APARTMENTTHREADED, 2, 1},
          Case{"the multithreaded form, which cannot be an apartment", true, COINIT_MULTITHREADED, 0, 0}}) {
        SCOPED_TRACE(c.name);
        ComUses com;
        OpeningOptions options;
        options.onThread = [&] {
            com.watch();
            if (c.hasCom) CoInitializeEx(nullptr, c.model);
        };
        options.afterwards = [&] {
            if (c.hasCom) CoUninitialize();
            com.stop();
        };
        ExportSettings settings;
        DrivenDialog dialog(settings, options);
        ASSERT_TRUE(waitUntil([&] { return dialog.focused() != nullptr; }));
        const int begunBefore = com.begun();
        const int endedBefore = com.ended();
        HWND files = browse(dialog, ControlId::browseEnvironmentMap);
        enterName(files, sky.wstring());
        awaitClosed(dialog, files);
        EXPECT_TRUE(waitUntil([&] { return dialog.text(ControlId::environmentMap) == sky.wstring(); }));
        EXPECT_EQ(com.begun() - begunBefore, c.begun);
        EXPECT_EQ(com.ended() - endedBefore, c.ended);
        EXPECT_EQ(fs::current_path(), before);
    }
}

TEST_F(DialogBrowse, UsesTheOlderDialogWhereTheShellHasNone) {
    const fs::path sky = maps.add(L"\u043d\u0435\u0431\u043e.dds");
    const fs::path before = fs::current_path();
    NoShellDialogs factory;
    DWORD registration = 0;
    OpeningOptions options;
    options.onThread = [&] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        CoRegisterClassObject(CLSID_FileOpenDialog, &factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                              &registration);
    };
    options.afterwards = [&] {
        CoRevokeClassObject(registration);
        CoUninitialize();
    };
    ExportSettings settings;
    DrivenDialog dialog(settings, options);
    for (const BrowseCase& c : kButtons) {
        HWND files = browse(dialog, c.button);
        EXPECT_EQ(filtersOf(files), (std::vector<std::wstring>{L"DXT Files (*.dds)", L"All Files (*.*)"}));
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(files, chx1))) << "the box for read-only files is hidden";
        enterName(files, sky.wstring());
        awaitClosed(dialog, files);
        EXPECT_TRUE(waitUntil([&] { return dialog.text(c.edit) == sky.wstring(); })) << c.name;
    }
    HWND files = browse(dialog, ControlId::browseReflectionMap);
    PostMessageW(files, WM_COMMAND, IDCANCEL, 0);
    awaitClosed(dialog, files);
    expectRefusal(dialog, browse(dialog, ControlId::browseReflectionMap));
    EXPECT_EQ(dialog.text(ControlId::reflectionMap), sky.wstring());
    EXPECT_EQ(factory.asked, 4);
    dialog.click(ControlId::cancel);
    EXPECT_EQ(dialog.finish(), DialogResult::cancelled);
    EXPECT_EQ(fs::current_path(), before);
}

TEST(MapFileDialog, AsksTheOlderDialogForTheSame) {
    std::array<wchar_t, 300> path{};
    HWND owner = GetDesktopWindow();
    const OPENFILENAMEW request = olderDialogRequest(owner, path);
    EXPECT_EQ(request.lStructSize, sizeof(OPENFILENAMEW));
    EXPECT_EQ(request.hwndOwner, owner);
    EXPECT_EQ(request.Flags, 0x1004U) << "existing files only, and no box for read-only ones";
    EXPECT_STREQ(request.lpstrDefExt, L"dds");
    constexpr wchar_t kFilters[] = L"DXT Files (*.dds)\0*.dds\0All Files (*.*)\0*.*\0";
    EXPECT_EQ(std::wstring(request.lpstrFilter, std::size(kFilters)),
              std::wstring(kFilters, std::size(kFilters)));
    EXPECT_EQ(request.nFilterIndex, 0U) << "the first of them";
    EXPECT_EQ(request.lpstrFile, path.data());
    EXPECT_EQ(request.nMaxFile, path.size());
    EXPECT_STREQ(request.lpstrFile, L"") << "no name is proposed";
    EXPECT_EQ(request.lpstrInitialDir, nullptr);
    EXPECT_EQ(request.lpstrTitle, nullptr);
    EXPECT_EQ(request.lpfnHook, nullptr);
}

}  // namespace
}  // namespace velinor
