// Opens the options dialog as the plug-in does, and works it as a user would.
#pragma once

#include <windows.h>

#include <functional>
#include <future>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "plugin/export_settings.h"
#include "plugin/options_dialog.h"
#include "plugin/options_dialog_model.h"
#include "plugin/setting_rules.h"

namespace velinor {

// Tries `condition` until it holds; false after 20 seconds.
bool waitUntil(const std::function<bool()>& condition);

struct OwnerWindow {
    RECT place{200, 150, 1000, 750};
    bool isVisible = true;
};

struct OpeningOptions {
    std::optional<OwnerWindow> owner = OwnerWindow{};
    PathExists exists;                 // none: the disk's
    std::function<void()> onThread;    // runs on the dialog's thread before it opens
    std::function<void()> afterwards;  // and after it has closed
};

// A dialog that runs in a thread of its own until the test is done with it. What goes wrong on the way (no
// window, no end) is a failure of the test and ends it by an exception.
class DrivenDialog {
  public:
    // `settings` belong to the dialog until finish.
    explicit DrivenDialog(ExportSettings& settings, OpeningOptions options = {});
    DrivenDialog(const DrivenDialog&) = delete;
    DrivenDialog& operator=(const DrivenDialog&) = delete;
    ~DrivenDialog();

    HWND window() const { return window_; }
    HWND owner() const { return owner_; }
    HWND item(ControlId control) const;

    // A click does nothing to a disabled control: the mouse does not reach it.
    void click(ControlId control) const;
    // The same without waiting for what follows, for buttons that open further windows.
    void postClick(ControlId control) const;
    void setText(ControlId edit, const std::wstring& text) const;
    void type(ControlId edit, const std::wstring& characters) const;
    // Sends a key to the control that has the keyboard.
    void press(WPARAM virtualKey) const;

    bool isChecked(ControlId box) const;
    bool isEnabled(ControlId control) const;
    std::wstring text(ControlId edit) const;
    std::wstring title() const;
    // The control that has the keyboard; null for none.
    HWND focused() const;

    // The visible dialog that `parent` owns, as soon as there is one.
    HWND awaitOwnedDialog(HWND parent) const;

    // Waits for the end; gives the dialog's result, or throws what came out of it.
    DialogResult finish();

    // What the dialog has reported, after its end.
    const Report& report() const { return report_; }

  private:
    void runDialog(ExportSettings& settings, const OpeningOptions& options);
    void awaitEnd();

    Report report_;
    std::promise<DWORD> threadId_;
    std::promise<DialogResult> result_;
    std::future<DialogResult> resultComing_;
    std::thread thread_;
    DWORD windowThread_ = 0;
    HWND window_ = nullptr;
    HWND owner_ = nullptr;
};

std::wstring windowText(HWND window);
std::wstring className(HWND window);
std::vector<HWND> childrenOf(HWND window);

}  // namespace velinor
