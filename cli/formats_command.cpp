// The command "formats": what can be read, and what is lost of it.
//
//     .fbx: Autodesk FBX
//         refused  version 6.1 and earlier
//         lost     materials of instances where they differ from those of the first
//                  ...
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/json_text.h"
#include "cli/scene_source.h"
#include "cli/standard_output.h"

namespace velinor {
namespace {

using nlohmann::ordered_json;

// Lines under one heading, which stands before the first.
template <typename Text>
void writeList(TextSink& out, std::string heading, std::span<const Text> lines) {
    constexpr std::size_t kWidth = 9;
    heading.resize(kWidth, ' ');
    for (const Text& line : lines) {
        out.write("    " + heading);
        out.write(line);
        out.write("\n");
        heading.assign(kWidth, ' ');
    }
}

void writeFormat(TextSink& out, const ReadableFormat& format) {
    std::string endings;
    for (const std::string& ending : format.endings)
        endings += (endings.empty() ? "." : ", .") + ending;
    out.write(endings + ": " + format.name + "\n");
    writeList<std::string>(out, "refused", format.refused);
    writeList<std::string>(out, "lost", format.lost);
}

void writeText(TextSink& out) {
    for (const ReadableFormat& format : readableFormats())
        writeFormat(out, format);
    out.write("No package holds, of any file\n");
    writeList(out, "", neverExported());
}

void writeJson(TextSink& out) {
    JsonObjectWriter document(out);
    document.list("formats", [](const auto& item) {
        for (const ReadableFormat& format : readableFormats()) {
            item(ordered_json{{"name", format.name},
                              {"endings", format.endings},
                              {"refused", format.refused},
                              {"lost", format.lost}});
        }
    });
    const auto never = neverExported();
    document.member("neverExported", std::vector<std::string>(never.begin(), never.end()));
    document.finish();
}

}  // namespace

ExitStatus runFormats(const FormatsArguments& arguments) {
    StandardOutput output;
    if (arguments.json) {
        writeJson(output);
    } else {
        writeText(output);
    }
    output.finish();
    return kDone;
}

}  // namespace velinor
