// The folder into which images are written that a scene file holds within itself, or that are made of others.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace velinor {

// Names files in a folder so that every part of an export can open them: of ASCII letters, digits, "_", "-"
// and "." alone, no two names the same but for case, none longer than a file name may be. So no name out of a
// file leads out of the folder.
class ImageFolder {
  public:
    // The folder must exist. What is in it is not overwritten.
    explicit ImageFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

    // A file of the folder that does not exist yet and was not given away before. Its name is the last
    // component of `wished` as a package would spell it, with the ending `ending` ("png"; empty: none), and a
    // number where others have that name.
    std::filesystem::path unusedFile(std::u16string_view wished, std::string_view ending);

    // Writes a file whole. Throws std::filesystem::filesystem_error, "write", where that fails.
    static void write(const std::filesystem::path& file, std::string_view bytes);

  private:
    std::filesystem::path folder_;
    std::set<std::string> used_;               // names, in small letters
    std::map<std::string, unsigned> numbers_;  // by name in small letters, the last number it was given
};

// The ending of an image file's name in small letters, without the dot, where it is a known one: "png". Empty
// otherwise.
std::string imageEnding(std::u16string_view name);

// `name` without its known ending.
std::u16string_view withoutImageEnding(std::u16string_view name);

}  // namespace velinor
