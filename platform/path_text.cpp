#include "platform/path_text.h"

#include <iterator>

namespace velinor {

std::filesystem::path fileNameOf(const std::filesystem::path& path) {
    using Character = std::filesystem::path::value_type;
    constexpr Character kSeparators[] = {'/', '\\'};
    using Text = std::filesystem::path::string_type;
    const Text& native = path.native();
    // None found is -1.
    return native.substr(native.find_last_of(kSeparators, Text::npos, std::size(kSeparators)) + 1);
}

std::string narrowFileName(const std::filesystem::path& path) {
    return narrowPath(fileNameOf(path));
}

std::filesystem::path asNarrowFile(const std::filesystem::path& path) {
    return pathOfNarrow(narrowPath(path));
}

bool hasNarrowForm(const std::filesystem::path& path) {
    return asNarrowFile(path).native() == path.native();
}

}  // namespace velinor
