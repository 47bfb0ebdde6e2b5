#include "plugin/options_window_max.h"

#include <windows.h>

#include <algorithm>
#include <bit>
#include <exception>
#include <string>
#include <utility>

#include "plugin/activation_context_max.h"
#include "plugin/map_file_dialog_max.h"
#include "plugin/options_dialog_model.h"

namespace velinor {
namespace {

bool isOnDisk(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

// Moves `dialog` over the middle of its owner, or of the screen where no owner is to be seen, and keeps it
// clear of the task bar.
void centre(HWND dialog) {
    HWND owner = GetWindow(dialog, GW_OWNER);
    const bool isOverOwner = owner != nullptr && IsWindowVisible(owner) != FALSE && IsIconic(owner) == FALSE;
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(isOverOwner ? owner : dialog, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT work = monitor.rcWork;
    RECT area = work;
    if (isOverOwner) GetWindowRect(owner, &area);
    RECT own{};
    GetWindowRect(dialog, &own);
    const LONG width = own.right - own.left;
    const LONG height = own.bottom - own.top;
    const auto middle = [](LONG from, LONG to, LONG size) { return from + (to - from - size) / 2; };
    const auto within = [](LONG at, LONG from, LONG to) { return std::max(std::min(at, to), from); };
    const LONG left = within(middle(area.left, area.right, width), work.left, work.right - width);
    const LONG top = within(middle(area.top, area.bottom, height), work.top, work.bottom - height);
    SetWindowPos(dialog, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// One opening of the dialog: the model, and the window that shows it.
class Opening {
  public:
    Opening(ExportSettings& settings, const PathExists& exists, Report& report)
        : model_(settings, exists, report) {}

    void begin(HWND dialog) {
        dialog_ = dialog;
        centre(dialog);
        model_.open();
        for (const auto& [edit, unused] : model_.edits())
            SendMessageW(item(edit), EM_SETLIMITTEXT, 0, 0);  // 0: as long as an edit can hold
        show();
        SetWindowTextW(dialog, wide(model_.title()).c_str());
    }

    // The user has pressed `button`, which has its new state if it is a check box.
    void press(ControlId button) {
        readControls();
        if (button == ControlId::browseEnvironmentMap || button == ControlId::browseReflectionMap) {
            if (const auto path = askForMapFile(dialog_)) model_.choose(button, *path);
        } else {
            model_.command(button);
        }
        show();
        if (model_.result()) EndDialog(dialog_, static_cast<INT_PTR>(*model_.result()));
    }

    // An exception must not pass through the system's frames; it waits here until the dialog is closed.
    void keep(std::exception_ptr failure) { failure_ = std::move(failure); }
    void rethrow() const {
        if (failure_) std::rethrow_exception(failure_);
    }

  private:
    static std::wstring wide(std::u16string_view text) { return {text.begin(), text.end()}; }

    HWND item(ControlId control) const { return GetDlgItem(dialog_, static_cast<int>(control)); }

    std::u16string shownText(ControlId edit) const {
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(item(edit))) + 1, L'\0');
        text.resize(
            static_cast<std::size_t>(GetWindowTextW(item(edit), text.data(), static_cast<int>(text.size()))));
        return {text.begin(), text.end()};
    }

    // The controls are right about their state: programs that help users may set them without a click.
    void readControls() {
        for (const auto& [box, unused] : model_.checkBoxes())
            model_.setChecked(box, IsDlgButtonChecked(dialog_, static_cast<int>(box)) == BST_CHECKED);
        for (const auto& [edit, unused] : model_.edits())
            model_.setText(edit, shownText(edit));
    }

    void show() const {
        for (const auto& [box, isChecked] : model_.checkBoxes())
            CheckDlgButton(dialog_, static_cast<int>(box), isChecked ? BST_CHECKED : BST_UNCHECKED);
        for (const auto& [edit, text] : model_.edits()) {
            if (text != shownText(edit)) SetWindowTextW(item(edit), wide(text).c_str());
        }
        for (const auto& [control, isEnabled] : model_.enabledStates())
            EnableWindow(item(control), isEnabled ? TRUE : FALSE);
    }

    OptionsDialogModel model_;
    HWND dialog_ = nullptr;
    std::exception_ptr failure_;
};

// TRUE where the message is dealt with, FALSE where the system shall do what it always does. It turns Enter
// into a press of the default button, Escape and the close button into one of Cancel.
BOOL handle(Opening& opening, HWND dialog, UINT message, WPARAM detail) {
    switch (message) {
        case WM_INITDIALOG:
            opening.begin(dialog);
            return TRUE;  // the first control gets the keyboard
        case WM_COMMAND:
            if (HIWORD(detail) == BN_CLICKED) opening.press(static_cast<ControlId>(LOWORD(detail)));
            return FALSE;
        default:
            return FALSE;
    }
}

INT_PTR CALLBACK OptionsDialogProc(HWND dialog, UINT message, WPARAM detail, LPARAM data) {
    if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, GWLP_USERDATA, data);
    auto* opening = std::bit_cast<Opening*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
    if (opening == nullptr) return FALSE;  // some messages come before WM_INITDIALOG
    try {
        return handle(*opening, dialog, message, detail);
    } catch (...) {
        opening->keep(std::current_exception());
        EndDialog(dialog, static_cast<INT_PTR>(DialogResult::cancelled));
        return FALSE;
    }
}

DialogResult resultOf(INT_PTR answer) {
    switch (answer) {
        case 0:
            return DialogResult::cancelled;  // or an owner that is no window: the system answers that so
        case 1:
            return DialogResult::confirmed;
        default:
            return DialogResult::notCreated;
    }
}

}  // namespace

OptionsWindow::OptionsWindow(void* ownerWindow, void* module)
    : OptionsWindow(ownerWindow, module, isOnDisk) {}

OptionsWindow::OptionsWindow(void* ownerWindow, void* module, PathExists exists)
    : ownerWindow_(ownerWindow), module_(module), exists_(std::move(exists)) {}

DialogResult OptionsWindow::run(ExportSettings& settings, Report& report) {
    Opening opening(settings, exists_, report);
    auto* const module = static_cast<HINSTANCE>(module_);
    const ActivationContext look(module);
    const INT_PTR answer =
        DialogBoxParamW(module, MAKEINTRESOURCEW(IDD_OPTIONS), static_cast<HWND>(ownerWindow_),
                        OptionsDialogProc, std::bit_cast<LPARAM>(&opening));
    opening.rethrow();
    return resultOf(answer);
}

}  // namespace velinor
