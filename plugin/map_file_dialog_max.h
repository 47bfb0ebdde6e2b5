// The dialog behind the "Browse..." buttons.
#pragma once

#include <windows.h>

#include <commdlg.h>

#include <optional>
#include <span>
#include <string>

namespace velinor {

// Lets the user choose an existing file for a map: DDS files unless all files are asked for. Gives its full
// path, or nothing where the user cancels. `owner` is disabled meanwhile. The working folder stays as it is,
// and so does COM on this thread. Where the shell's dialog cannot be had, the older one stands in for it.
std::optional<std::u16string> askForMapFile(HWND owner);

// What the older dialog is asked. `path`, which holds the name to begin with, must outlive the request and
// gets the answer.
OPENFILENAMEW olderDialogRequest(HWND owner, std::span<wchar_t> path);

}  // namespace velinor
