#include "plugin/map_file_dialog_max.h"

#include <objbase.h>
#include <shobjidl.h>

#include <array>
#include <memory>

namespace velinor {
namespace {

constexpr const wchar_t* kDefaultExtension = L"dds";

struct ReleaseInterface {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename T>
using ComPointer = std::unique_ptr<T, ReleaseInterface>;

// COM for the length of a call. A thread that has it already keeps it, in whatever form.
class ComScope {
  public:
    ComScope() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;
    ~ComScope() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    // Whether objects with windows run on this thread: on one of the multithreaded form they would not.
    bool isApartment() const { return SUCCEEDED(result_); }

  private:
    HRESULT result_;
};

// Puts the working folder back: both dialogs may change it, whatever they are asked, and the path of a map
// may be relative to it.
class WorkingFolderGuard {
  public:
    WorkingFolderGuard() : folder_(GetCurrentDirectoryW(0, nullptr), L'\0') {
        GetCurrentDirectoryW(static_cast<DWORD>(folder_.size()), folder_.data());
    }
    WorkingFolderGuard(const WorkingFolderGuard&) = delete;
    WorkingFolderGuard& operator=(const WorkingFolderGuard&) = delete;
    ~WorkingFolderGuard() { SetCurrentDirectoryW(folder_.c_str()); }

  private:
    std::wstring folder_;
};

std::u16string text(const wchar_t* wide) {
    const std::wstring_view view(wide);
    return {view.begin(), view.end()};
}

// What became of a dialog: whether the user saw it at all, and the path unless it was cancelled.
struct Answer {
    bool wasShown = false;
    std::optional<std::u16string> path;
};

bool describe(IFileOpenDialog& dialog) {
    const std::array<COMDLG_FILTERSPEC, 2> filters{
        {{L"DXT Files (*.dds)", L"*.dds"}, {L"All Files (*.*)", L"*.*"}}};
    FILEOPENDIALOGOPTIONS options = 0;
    return SUCCEEDED(dialog.GetOptions(&options)) &&
           SUCCEEDED(dialog.SetOptions(options | FOS_FILEMUSTEXIST | FOS_FORCEFILESYSTEM)) &&
           SUCCEEDED(dialog.SetFileTypes(static_cast<UINT>(filters.size()), filters.data())) &&
           SUCCEEDED(dialog.SetDefaultExtension(kDefaultExtension));
}

std::optional<std::u16string> chosenPath(IFileOpenDialog& dialog) {
    IShellItem* item = nullptr;
    if (FAILED(dialog.GetResult(&item))) return std::nullopt;
    const ComPointer<IShellItem> result(item);
    wchar_t* name = nullptr;
    if (FAILED(result->GetDisplayName(SIGDN_FILESYSPATH, &name))) return std::nullopt;
    const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> path(name, &CoTaskMemFree);
    return text(path.get());
}

Answer askThroughShell(HWND owner) {
    const ComScope com;
    if (!com.isApartment()) return {};
    IFileOpenDialog* made = nullptr;
    if (FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made))))
        return {};
    const ComPointer<IFileOpenDialog> dialog(made);
    if (!describe(*dialog)) return {};
    const HRESULT shown = dialog->Show(owner);
    if (shown == HRESULT_FROM_WIN32(ERROR_CANCELLED)) return {true, std::nullopt};
    if (FAILED(shown)) return {};
    return {true, chosenPath(*dialog)};
}

std::optional<std::u16string> askTheOldWay(HWND owner) {
    std::wstring path(32768, L'\0');  // no path is longer
    OPENFILENAMEW request = olderDialogRequest(owner, path);
    if (GetOpenFileNameW(&request) == FALSE) return std::nullopt;
    return text(path.c_str());
}

}  // namespace

OPENFILENAMEW olderDialogRequest(HWND owner, std::span<wchar_t> path) {
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner;
    request.lpstrFilter = L"DXT Files (*.dds)\0*.dds\0All Files (*.*)\0*.*\0";
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.Flags = OFN_HIDEREADONLY | OFN_FILEMUSTEXIST;
    request.lpstrDefExt = kDefaultExtension;
    return request;
}

std::optional<std::u16string> askForMapFile(HWND owner) {
    const WorkingFolderGuard workingFolder;
    Answer answer = askThroughShell(owner);
    return answer.wasShown ? std::move(answer.path) : askTheOldWay(owner);
}

}  // namespace velinor
