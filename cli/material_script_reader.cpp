#include "cli/material_script_reader.h"

#include <utility>

#include "cli/text_lines.h"

namespace velinor {
namespace {

std::string_view unquoted(std::string_view name) {
    const bool isQuoted = name.size() >= 2 && name.front() == '"' && name.back() == '"';
    return isQuoted ? name.substr(1, name.size() - 2) : name;
}

// What keeps OGRE from reading `name` as it stands; empty where nothing does.
std::string_view flawOf(std::string_view name) {
    if (name != unquoted(name)) return {};
    if (name.find_first_of(" \t") != std::string_view::npos) return "holds a blank";
    if (name.find_first_of("{}") != std::string_view::npos) return "holds a brace";
    if (name.find(':') != std::string_view::npos) return "holds a colon";
    if (name.starts_with('$')) return "starts with \"$\"";
    return {};
}

class ScriptReader {
  public:
    MaterialScript read(std::string_view text) {
        while (!text.empty()) {
            ++line_;
            readLine(trimmed(takeLine(text)));
        }
        if (depth_ > 0) fault("a brace is not closed");
        return std::move(script_);
    }

  private:
    void fault(std::string text) { script_.faults.push_back({std::move(text), line_}); }

    void readLine(std::string_view line) {
        if (line.starts_with("//")) return;
        if (line == "{") {
            ++depth_;
        } else if (line == "}") {
            if (depth_ == 0) return fault("a brace closes nothing");
            --depth_;
        } else {
            readCommand(line);
        }
    }

    void readCommand(std::string_view line) {
        const std::string_view command = takeWord(line);
        const std::string_view value = trimmed(line);
        if (command == "material" && depth_ == 0) {
            if (value.empty()) return fault("a material has no name");
            script_.materials.push_back({std::string(unquoted(value)), line_});
        } else if (command == "texture") {
            readTexture(value);
        } else if (command == "cubic_texture") {
            constexpr std::string_view kMode = " combinedUVW";
            if (!line.ends_with(kMode)) return fault("cubic_texture does not end in \"combinedUVW\"");
            readTexture(trimmed(line.substr(0, line.size() - kMode.size())));
        }
    }

    void readTexture(std::string_view value) {
        const std::string name(unquoted(value));
        if (name.empty()) return fault("a texture unit names no texture");
        const std::string_view flaw = flawOf(value);
        if (!flaw.empty()) {
            return fault("the texture name \"" + name.substr(0, 300) + "\" " + std::string(flaw) +
                         ", which OGRE does not read as part of a name; rename the file");
        }
        script_.textures.push_back({name, line_});
    }

    MaterialScript script_;
    std::size_t line_ = 0;
    std::size_t depth_ = 0;
};

}  // namespace

MaterialScript readMaterialScript(std::string_view text) {
    return ScriptReader().read(text);
}

}  // namespace velinor
