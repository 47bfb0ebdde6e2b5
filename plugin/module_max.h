// The plug-in's own library file, as the host has loaded it.
#pragma once

#include "hosts/max/max_sdk.h"

#include <filesystem>

namespace velinor {

// The numbers of the plug-in's texts.
enum class StringResource : unsigned { libDescription = 1, category = 2, className = 3 };

// The text of that number in the host's language, or null where there is none. It stays in the one buffer of
// 256 characters until the next call.
const MCHAR* stringResource(StringResource id);

// The library file's handle; null before it is attached.
HINSTANCE moduleHandle();

// The full path of the library file; empty where the system does not tell it.
std::filesystem::path modulePath();

}  // namespace velinor
