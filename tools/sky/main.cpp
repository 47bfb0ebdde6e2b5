// The program tolvex_sky: writes the default sky, or a picture of a sky's faces.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "platform/program_start.h"
#include "tools/sky/dds_reader.h"
#include "tools/sky/default_sky.h"

namespace velinor {
namespace {

constexpr std::string_view kUsage =
    "usage: tolvex_sky OUT.dds            write the default sky\n"
    "       tolvex_sky --cross IN.dds OUT.ppm   unfold the faces of a DXT1 cube map into a picture\n";

void writeFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file) return;
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    throw std::runtime_error(utf8Path(path) + ": cannot be written");
}

void writeCross(const std::filesystem::path& in, const std::filesystem::path& out) {
    std::ifstream file(in, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    const auto levels = readDds(bytes);
    if (!levels) throw std::runtime_error(utf8Path(in) + ": is no whole DXT1 cube map with mipmaps");
    writeFile(out, crossPicture(levels->front()));
}

int run(const std::vector<std::string>& arguments) {
    if (arguments.size() == 3 && arguments[0] == "--cross") {
        writeCross(pathOfUtf8(arguments[1]), pathOfUtf8(arguments[2]));
    } else if (arguments.size() == 1 && !arguments[0].starts_with('-')) {
        writeFile(pathOfUtf8(arguments[0]), defaultSkyFile());
    } else {
        std::fputs(kUsage.data(), stderr);
        return 2;
    }
    return 0;
}

}  // namespace
}  // namespace velinor

int main(int count, char** arguments) {
    try {
        return velinor::run(velinor::programArguments(count, arguments));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tolvex_sky: %s\n", error.what());
        return 1;
    }
}
