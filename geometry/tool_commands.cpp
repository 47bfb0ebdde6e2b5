#include "geometry/tool_commands.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_format.h"
#include "platform/path_text.h"

namespace velinor {
namespace {

constexpr std::string_view kDecimationPrefix = "-meshDecimation 10 10 ";

// By quality.
constexpr std::string_view kFallbackOptions[] = {
    "",
    "-meshDecimation 10 10 0.01",
    "-meshDecimation 10 10 0.1",
    "-meshDecimation 10 10 0.2",
    "-convexDecomposition 8000 32",
    "-convexHull",
};

std::filesystem::path toolPath(const std::filesystem::path& pluginFolder, const char* name) {
    return pluginFolder / "tolvex" / "ogrexmltools" / name;
}

// Builds both forms of a command from the same pieces. The blanks of the text are part of it.
class CommandBuilder {
  public:
    CommandBuilder& path(const std::filesystem::path& path) {
        const std::string narrow = narrowPath(path);
        command_.commandLine += '"' + narrow + '"';
        command_.arguments.push_back(narrow);
        return *this;
    }

    // Text that stands outside quotes: its words are arguments.
    CommandBuilder& text(std::string_view text) {
        command_.commandLine += text;
        for (std::size_t begin = 0; (begin = text.find_first_not_of(' ', begin)) != std::string_view::npos;) {
            const std::size_t end = std::min(text.find(' ', begin), text.size());
            command_.arguments.emplace_back(text.substr(begin, end - begin));
            begin = end;
        }
        return *this;
    }

    ToolCommand take() { return std::move(command_); }

  private:
    ToolCommand command_;
};

}  // namespace

std::filesystem::path meshConverterPath(const std::filesystem::path& pluginFolder) {
    return toolPath(pluginFolder, "OgreXMLConverter.exe");
}

std::filesystem::path meshProcessorPath(const std::filesystem::path& pluginFolder) {
    return toolPath(pluginFolder, "meshprocessor.exe");
}

ToolCommand converterCommand(const std::filesystem::path& pluginFolder, const std::filesystem::path& meshXml,
                             const std::filesystem::path& mesh) {
    return CommandBuilder()
        .path(meshConverterPath(pluginFolder))
        .text(" -d3d -q  ")
        .path(meshXml)
        .text(" ")
        .path(mesh)
        .take();
}

ToolCommand processorCommand(const std::filesystem::path& pluginFolder, const std::filesystem::path& meshXml,
                             std::string_view option, const std::filesystem::path& collisionMesh) {
    return CommandBuilder()
        .path(meshProcessorPath(pluginFolder))
        .text(" -import ")
        .path(meshXml)
        .text(" ")
        .text(option)
        .text(" -saveCollisionShapes ")
        .path(collisionMesh)
        .take();
}

std::string_view fallbackOption(std::int32_t fallbackQuality) {
    const auto index = static_cast<std::size_t>(fallbackQuality);  // a negative one becomes large
    return kFallbackOptions[index < std::size(kFallbackOptions) ? index : 1];
}

float decimationValue(std::int32_t faceCount, std::int32_t polycountGoal, int attempt) {
    constexpr float kLimit = 0.4F;
    constexpr float kHalfWay = 8.0F;
    constexpr double kStep = 0.01;
    // In 64 bits, which hold the one quotient that 32 do not.
    const std::int64_t quotient = std::int64_t{faceCount} / (polycountGoal == 0 ? 1 : polycountGoal);
    const auto ratio = static_cast<float>(quotient);
    const float soft = ratio * kLimit / (std::fabs(ratio) + kHalfWay);
    const auto decimation = static_cast<float>(double{soft} - attempt * kStep);
    return decimation < 0 ? 0 : std::min(decimation, kLimit);
}

std::string decimationOption(float decimation) {
    std::string option(kDecimationPrefix);
    appendFixed6(option, decimation);
    return option;
}

}  // namespace velinor
