// Starting up the image library, libvips.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace velinor {

// The binary interface of libvips that this program was built for.
inline constexpr int kImageLibraryAbi = 42;

// Why the image library cannot be used, in words for a person that begin with its file; nothing where it can.
// On Windows it lies in `folder`, where the system may not look by itself, and is loaded here: to be called
// before anything else of it is.
std::optional<std::string> imageLibraryFault(const std::filesystem::path& folder);

// Starts the image library. `hostFolder` is the folder of the host program; the library finds its own files
// from there. Where the library at hand has another binary interface, that is logged, the library is not
// started, and whatever uses it later fails on its own. May be called again and again.
void startImageLibrary(const std::string& hostFolder);

// The binary interface of the library at hand: its interface's current number minus the number of older
// interfaces that it serves as well.
int imageLibraryAbi();

// Whether `abi` is the interface that this program needs. Otherwise logs a warning of three lines and records
// an error with the library.
bool acceptImageLibraryAbi(int abi);

}  // namespace velinor
