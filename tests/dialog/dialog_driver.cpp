#include "tests/dialog/dialog_driver.h"

#include <bit>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "plugin/options_window_max.h"

namespace velinor {
namespace {

using namespace std::chrono_literals;

constexpr auto kLongest = 20s;

// The dialogs of a thread; there are no other windows of that class.
std::vector<HWND> dialogsOf(DWORD thread) {
    std::vector<HWND> found;
    EnumThreadWindows(
        thread,
        [](HWND window, LPARAM list) -> BOOL {
            if (IsWindowVisible(window) != FALSE && className(window) == L"#32770")
                std::bit_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        std::bit_cast<LPARAM>(&found));
    return found;
}

HWND makeOwner(const OwnerWindow& owner) {
    const RECT& at = owner.place;
    return CreateWindowExW(0, L"Static", L"Owner",
                           WS_OVERLAPPEDWINDOW | (owner.isVisible ? WS_VISIBLE : DWORD{0}), at.left, at.top,
                           at.right - at.left, at.bottom - at.top, nullptr, nullptr, nullptr, nullptr);
}

}  // namespace

bool waitUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + kLongest;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

std::wstring windowText(HWND window) {
    const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const LRESULT read = SendMessageW(window, WM_GETTEXT, text.size(), std::bit_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(read));
    return text;
}

std::wstring className(HWND window) {
    std::wstring name(64, L'\0');
    name.resize(static_cast<std::size_t>(GetClassNameW(window, name.data(), static_cast<int>(name.size()))));
    return name;
}

std::vector<HWND> childrenOf(HWND window) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    return children;
}

DrivenDialog::DrivenDialog(ExportSettings& settings, OpeningOptions options)
    : resultComing_(result_.get_future()) {
    std::future<DWORD> started = threadId_.get_future();
    thread_ = std::thread([this, &settings, chosen = std::move(options)] { runDialog(settings, chosen); });
    windowThread_ = started.get();
    const bool isOpen = waitUntil([this] {
        const std::vector<HWND> dialogs = dialogsOf(windowThread_);
        if (dialogs.size() == 1) window_ = dialogs.front();
        return window_ != nullptr || resultComing_.wait_for(0s) == std::future_status::ready;
    });
    if (window_ != nullptr) return;
    if (!isOpen) std::abort();  // the thread hangs, and cannot be ended
    awaitEnd();
    throw std::runtime_error("the options dialog has not opened");
}

DrivenDialog::~DrivenDialog() {
    if (!thread_.joinable()) return;
    // A failed test may leave further windows open over the dialog.
    waitUntil([this] {
        for (HWND dialog : dialogsOf(windowThread_)) {
            if (IsWindowEnabled(dialog) != FALSE) PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        }
        return resultComing_.wait_for(50ms) == std::future_status::ready;
    });
    awaitEnd();
}

void DrivenDialog::runDialog(ExportSettings& settings, const OpeningOptions& options) {
    if (options.onThread) options.onThread();
    if (options.owner) owner_ = makeOwner(*options.owner);
    threadId_.set_value(GetCurrentThreadId());
    HINSTANCE module = GetModuleHandleW(nullptr);
    try {
        OptionsWindow window =
            options.exists ? OptionsWindow(owner_, module, options.exists) : OptionsWindow(owner_, module);
        const DialogResult result = window.run(settings, report_);
        if (options.afterwards) options.afterwards();
        result_.set_value(result);
    } catch (...) {
        if (options.afterwards) options.afterwards();
        result_.set_exception(std::current_exception());
    }
    if (owner_ != nullptr) DestroyWindow(owner_);
}

void DrivenDialog::awaitEnd() {
    if (resultComing_.wait_for(kLongest) != std::future_status::ready) {
        std::fputs("the options dialog does not close\n", stderr);
        std::abort();  // its thread cannot be ended
    }
    thread_.join();
}

DialogResult DrivenDialog::finish() {
    awaitEnd();
    return resultComing_.get();
}

HWND DrivenDialog::item(ControlId control) const {
    return GetDlgItem(window_, static_cast<int>(control));
}

void DrivenDialog::click(ControlId control) const {
    if (isEnabled(control)) SendMessageW(item(control), BM_CLICK, 0, 0);
}

void DrivenDialog::postClick(ControlId control) const {
    if (isEnabled(control)) PostMessageW(item(control), BM_CLICK, 0, 0);
}

void DrivenDialog::setText(ControlId edit, const std::wstring& text) const {
    SendMessageW(item(edit), WM_SETTEXT, 0, std::bit_cast<LPARAM>(text.c_str()));
}

void DrivenDialog::type(ControlId edit, const std::wstring& characters) const {
    SendMessageW(item(edit), EM_SETSEL, 0, -1);
    for (const wchar_t character : characters)
        SendMessageW(item(edit), WM_CHAR, character, 1);
}

void DrivenDialog::press(WPARAM virtualKey) const {
    HWND target = focused() == nullptr ? window_ : focused();
    PostMessageW(target, WM_KEYDOWN, virtualKey, 1);
    PostMessageW(target, WM_KEYUP, virtualKey, LPARAM{1} | (LPARAM{3} << 30));
}

bool DrivenDialog::isChecked(ControlId box) const {
    return SendMessageW(item(box), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool DrivenDialog::isEnabled(ControlId control) const {
    return IsWindowEnabled(item(control)) != FALSE;
}

std::wstring DrivenDialog::text(ControlId edit) const {
    return windowText(item(edit));
}

std::wstring DrivenDialog::title() const {
    return windowText(window_);
}

HWND DrivenDialog::focused() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(windowThread_, &info) != FALSE ? info.hwndFocus : nullptr;
}

HWND DrivenDialog::awaitOwnedDialog(HWND parent) const {
    HWND owned = nullptr;
    waitUntil([&] {
        for (HWND dialog : dialogsOf(windowThread_)) {
            if (GetWindow(dialog, GW_OWNER) == parent) owned = dialog;
        }
        return owned != nullptr;
    });
    if (owned == nullptr) throw std::runtime_error("no window has opened over the dialog");
    return owned;
}

}  // namespace velinor
