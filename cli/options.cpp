#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "base/text.h"
#include "cli/command_error.h"
#include "cli/setting_options.h"
#include "hosts/snapshot/nearest_name.h"
#include "plugin/version.h"

namespace velinor {
namespace {

constexpr const char* kVersionText = "tolvex " TOLVEX_VERSION_TEXT "\n";

constexpr const char* kHelpText =
    "tolvex writes scenes as packages of the Velinor runtime.\n"
    "\n"
    "  tolvex export [OPTIONS] SCENE TARGET   write the package of SCENE; of TARGET D/N.E it is the folder "
    "D/N\n"
    "  tolvex inspect [OPTIONS] SCENE         print what an export would find\n"
    "  tolvex snapshot [OPTIONS] SCENE OUT    save SCENE as a scene snapshot, .scene.json or .scene.cbor\n"
    "  tolvex check PACKAGE                   verify a package\n"
    "  tolvex formats [--json]                what can be read, and what is lost of it\n"
    "\n"
    "  tolvex COMMAND --help                  the options of a command\n"
    "  tolvex --version                       the version\n"
    "\n"
    "SCENE is a scene snapshot, a file of another program (fbx, gltf, dae, obj, ...) or - for a snapshot "
    "from standard\n"
    "input. Exit status: 0 done; 1 something was skipped (--strict) or a package has faults; 2 wrong "
    "arguments or a\n"
    "scene that cannot be read; 3 a file-system or host error.\n";

[[noreturn]] void refuse(const std::string& text) {
    throw CommandError(kNotRun, text);
}

// " (did you mean "export"?)", or nothing where no known name is near.
std::string suggestion(std::string_view word, const std::vector<std::string>& known) {
    const std::vector<std::string_view> views(known.begin(), known.end());
    const std::string_view nearest = nearestName(word, views);
    return nearest.empty() ? std::string() : " (did you mean \"" + std::string(nearest) + "\"?)";
}

// Shows flags that can be cleared as --[no-]name.
class HelpFormatter final : public CLI::Formatter {
  public:
    HelpFormatter() { column_width(38); }

    std::string make_option_name(const CLI::Option* option, bool isPositional) const override {
        if (isPositional || option->get_lnames().size() < 2)
            return CLI::Formatter::make_option_name(option, isPositional);
        return "--[no-]" + option->get_lnames().front();
    }

    // What is missing is told after parsing, so CLI11 takes every positional for optional and would bracket
    // it.
    std::string make_option_usage(const CLI::Option* option) const override {
        return make_option_name(option, option->get_positional());
    }

    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_type_size() == 0 || option->get_positional() ? "" : " " + option->get_type_name();
    }
};

// What CLI11 says of options with too few or too many values, in our words where its own are obscure.
std::string mismatchText(std::string_view text) {
    const std::size_t end = text.find(" was given a disallowed flag override");
    if (end == std::string_view::npos) return std::string(text);
    return "--" + std::string(text.substr(0, end)) + ": takes no value; write the option alone";
}

// One command's parser: CLI11 splits the arguments, everything that is said to the user is said here.
class CommandParser {
  public:
    CommandParser(const std::string& command, const std::string& description)
        : command_(command), app_(description, "tolvex " + command) {
        app_.formatter(std::make_shared<HelpFormatter>());
        app_.set_help_flag("--help", "print this text")->group("Help");
        app_.allow_extras();
        app_.allow_windows_style_options(false);
    }

    void flag(std::string_view name, bool& value, std::string_view help,
              const std::string& group = "Options") {
        app_.add_flag("--" + std::string(name), value, std::string(help))
            ->disable_flag_override()
            ->group(group);
    }

    void clearableFlag(std::string_view name, bool& value, std::string_view help, const std::string& group) {
        const std::string base(name);
        app_.add_flag("--" + base + ",!--no-" + base, value, std::string(help))
            ->disable_flag_override()
            ->group(group);
    }

    void text(std::string_view name, const char* typeName, std::optional<std::string>& value,
              std::string_view help, const std::string& group) {
        app_.add_option("--" + std::string(name), value, std::string(help))
            ->type_name(typeName)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
            ->group(group);
    }

    // An option that may be given several times.
    void texts(const std::string& name, const char* typeName, std::string_view help,
               const std::string& group) {
        app_.add_option("--" + name, repeated_[name], std::string(help))
            ->type_name(typeName)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->group(group);
    }

    void positional(const std::string& name, std::string_view help) {
        app_.add_option(name, positionals_[name], std::string(help))->type_name("");
        order_.push_back(name);
    }

    // True where the arguments ask for help, which help() gives.
    bool parse(std::span<const std::string> arguments) {
        try {
            app_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        } catch (const CLI::CallForHelp&) {
            return true;
        } catch (const CLI::ArgumentMismatch& error) {
            refuse(mismatchText(error.what()) + seeHelp());
        } catch (const CLI::ParseError& error) {
            refuse(std::string(error.what()) + seeHelp());
        }
        std::vector<std::string> extras = app_.remaining();
        std::erase(extras, "--");  // the mark before names that look like options is among them
        refuseExtras(extras);
        for (const std::string& name : order_) {
            if (positionals_[name].empty()) refuse(name + " is missing" + seeHelp());
        }
        return false;
    }

    std::string help() const { return app_.help(); }

    // The path given for a positional.
    std::filesystem::path path(const std::string& name) const {
        return toPath(toUtf16Lossy(positionals_.at(name)));
    }

    // What was given for an option that may be given several times.
    const std::vector<std::string>& texts(const std::string& name) const { return repeated_.at(name); }

  private:
    std::string seeHelp() const { return "; see \"tolvex " + command_ + " --help\""; }

    void refuseExtras(const std::vector<std::string>& extras) const {
        for (const std::string& extra : extras) {
            if (extra.size() < 2 || extra.front() != '-') continue;
            const std::string name = extra.substr(0, extra.find('='));
            refuse("unknown option \"" + name + "\"" + suggestion(name, optionNames()) + seeHelp());
        }
        if (!extras.empty()) refuse("unexpected argument \"" + extras.front() + "\"" + seeHelp());
    }

    std::vector<std::string> optionNames() const {
        std::vector<std::string> names;
        for (const CLI::Option* option : app_.get_options()) {
            for (const std::string& name : option->get_lnames())
                names.push_back("--" + name);
        }
        return names;
    }

    std::string command_;
    CLI::App app_;
    std::map<std::string, std::string> positionals_;
    std::vector<std::string> order_;
    std::map<std::string, std::vector<std::string>> repeated_;
};

// The whole of `text` as a number, whatever the locale.
template <typename Number>
Number parseNumber(std::string_view option, const std::string& text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string where = "--" + std::string(option) + ": \"" + text + "\" ";
    if (error == std::errc::result_out_of_range) refuse(where + "is out of range; give a smaller number");
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    if constexpr (std::is_integral_v<Number>) {
        if (!isWhole) refuse(where + "is not a whole number; write it like 3");
    } else {
        if (!isWhole || !std::isfinite(number)) refuse(where + "is not a number; write it like 0.5");
    }
    return number;
}

// The options of the settings: flags are stored while parsing, texts afterwards.
class SettingsParser {
  public:
    SettingsParser(CommandParser& parser, ExportSettings& settings) : settings_(settings) {
        for (const SettingOption& option : settingOptions()) {
            std::visit([&](auto field) { declare(parser, option, field); }, option.field);
        }
    }

    void store() {
        for (const SettingOption& option : settingOptions()) {
            const auto& text = texts_[option.name];
            if (text) std::visit([&](auto field) { storeText(option.name, *text, field); }, option.field);
        }
    }

  private:
    void declare(CommandParser& parser, const SettingOption& option, bool ExportSettings::*field) {
        parser.clearableFlag(option.name, settings_.*field, option.help, "Settings");
    }

    template <typename Value>
    void declare(CommandParser& parser, const SettingOption& option, Value ExportSettings::* /*field*/) {
        const char* type = std::is_same_v<Value, std::filesystem::path> ? "FILE" : "NUMBER";
        parser.text(option.name, type, texts_[option.name], option.help, "Settings");
    }

    void storeText(std::string_view /*name*/, const std::string& /*text*/, bool ExportSettings::* /*field*/) {
    }

    template <typename Value>
    void storeText(std::string_view name, const std::string& text, Value ExportSettings::*field) {
        if constexpr (std::is_same_v<Value, std::filesystem::path>) {
            settings_.*field = toPath(toUtf16Lossy(text));
        } else {
            settings_.*field = parseNumber<Value>(name, text);
        }
    }

    ExportSettings& settings_;
    std::map<std::string_view, std::optional<std::string>> texts_;
};

void requireFileName(const std::filesystem::path& target) {
    const std::filesystem::path name = target.filename();
    if (!name.empty() && name != "." && name != "..") return;
    refuse(utf8Path(target) + ": TARGET has no file name; write FOLDER/NAME.jsx for the package FOLDER/NAME");
}

// The options of how a scene is read.
class ReadingParser {
  public:
    explicit ReadingParser(CommandParser& parser) : parser_(parser) {
        const char* group = "Reading";
        parser.texts(kAssetFolder, "DIR", "look for missing bitmaps in DIR, too; may be repeated", group);
        parser.texts(
            kSelect, "PATTERN",
            "select the nodes of such names (*, ? and [a-z] as for files) and all below them; may be "
            "repeated",
            group);
        parser.text(kUpAxis, "AXIS", upAxis_,
                    "y or z: the axis that points up, for formats that do not say (obj, stl, ply, ...)",
                    group);
        parser.text(kMemoryLimit, "MIB", memoryLimit_,
                    "memory that the reading of a file may take (" +
                        std::to_string(kDefaults.memoryBytes >> 20U) + ")",
                    group);
        parser.text(kTimeLimit, "SECONDS", timeLimit_,
                    "processor time that a step of reading a file may take (" +
                        std::to_string(kDefaults.processorSeconds) + ")",
                    group);
    }

    ReadingOptions options() const {
        ReadingOptions options;
        for (const std::string& text : parser_.texts(kAssetFolder))
            options.assetFolders.push_back(toPath(toUtf16Lossy(text)));
        options.selected = parser_.texts(kSelect);
        if (upAxis_) options.upAxis = axis(*upAxis_);
        if (memoryLimit_) {
            // The system's own limits are of 64 bits.
            options.importLimits.memoryBytes =
                limit<std::uint64_t>(kMemoryLimit, *memoryLimit_, UINT64_MAX >> 21U) << 20U;
        }
        if (timeLimit_)
            options.importLimits.processorSeconds = limit<unsigned>(kTimeLimit, *timeLimit_, INT32_MAX);
        return options;
    }

  private:
    static constexpr const char* kAssetFolder = "asset-folder";
    static constexpr const char* kSelect = "select";
    static constexpr const char* kUpAxis = "up-axis";
    static constexpr const char* kMemoryLimit = "import-memory-limit";
    static constexpr const char* kTimeLimit = "import-time-limit";
    static constexpr IsolationLimits kDefaults{};

    static UpAxis axis(const std::string& text) {
        if (text == "y") return UpAxis::y;
        if (text == "z") return UpAxis::z;
        refuse(std::string("--") + kUpAxis + ": \"" + text +
               "\" is not an axis that can point up; write y or z");
    }

    template <typename Number>
    static Number limit(const char* option, const std::string& text, Number most) {
        const auto number = parseNumber<Number>(option, text);
        const std::string where = std::string("--") + option + ": \"" + text + "\" ";
        if (number == 0) refuse(where + "leaves nothing to read with; write 1 or more");
        if (number > most) refuse(where + "is out of range; give a smaller number");
        return number;
    }

    CommandParser& parser_;
    std::optional<std::string> upAxis_;
    std::optional<std::string> memoryLimit_;
    std::optional<std::string> timeLimit_;
};

constexpr const char* kSceneHelp = "the scene's file; - reads a snapshot from standard input";

CommandLine parseExport(std::span<const std::string> arguments) {
    ExportArguments result;
    CommandParser parser("export", "Writes the package of SCENE into the folder D/N, where TARGET is D/N.E.");
    parser.positional("SCENE", kSceneHelp);
    parser.positional("TARGET", "names the package");
    parser.flag("overwrite", result.overwrite, "replace an existing package, and only a package");
    parser.flag("strict", result.strict, "exit with 1 when anything was skipped");
    parser.flag("quiet", result.quiet, "print the package's path only, and errors");
    parser.flag("json", result.json, "print the report as JSON");
    parser.flag("suppress-prompts", result.suppressPrompts,
                "use the settings as given, without the dialog's rules");
    const ReadingParser reading(parser);
    SettingsParser settings(parser, result.settings);
    if (parser.parse(arguments)) return ShowText{parser.help()};
    settings.store();
    result.scene = parser.path("SCENE");
    result.target = parser.path("TARGET");
    result.reading = reading.options();
    requireFileName(result.target);
    return result;
}

CommandLine parseInspect(std::span<const std::string> arguments) {
    InspectArguments result;
    CommandParser parser("inspect", "Prints the nodes of SCENE and what an export would find among them.");
    parser.positional("SCENE", kSceneHelp);
    parser.flag("json", result.json, "print as JSON");
    const ReadingParser reading(parser);
    if (parser.parse(arguments)) return ShowText{parser.help()};
    result.scene = parser.path("SCENE");
    result.reading = reading.options();
    return result;
}

CommandLine parseSnapshot(std::span<const std::string> arguments) {
    CommandParser parser("snapshot", "Saves SCENE as a scene snapshot.");
    parser.positional("SCENE", kSceneHelp);
    parser.positional("OUT", "the file to write; .scene.json or .scene.cbor says how");
    const ReadingParser reading(parser);
    if (parser.parse(arguments)) return ShowText{parser.help()};
    return SnapshotArguments{parser.path("SCENE"), parser.path("OUT"), reading.options()};
}

CommandLine parseCheck(std::span<const std::string> arguments) {
    CommandParser parser("check", "Verifies a package: its descriptors, and the files that they name.");
    parser.positional("PACKAGE", "the package's folder");
    if (parser.parse(arguments)) return ShowText{parser.help()};
    return CheckArguments{parser.path("PACKAGE")};
}

CommandLine parseFormats(std::span<const std::string> arguments) {
    FormatsArguments result;
    CommandParser parser("formats", "Lists the files that can be read, by ending, and what is lost of each.");
    parser.flag("json", result.json, "print as JSON");
    if (parser.parse(arguments)) return ShowText{parser.help()};
    return result;
}

struct Command {
    const char* name;
    CommandLine (*parse)(std::span<const std::string> arguments);
};

constexpr auto kCommands = std::to_array<Command>({
    {"export", parseExport},
    {"inspect", parseInspect},
    {"snapshot", parseSnapshot},
    {"check", parseCheck},
    {"formats", parseFormats},
});

void requireUtf8(std::span<const std::string> arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (toUtf16(arguments[i])) continue;
        refuse("argument " + std::to_string(i + 1) + " (\"" + toUtf8(toUtf16Lossy(arguments[i])) +
               "\") is not valid UTF-8; rename the file, or use a UTF-8 locale");
    }
}

[[noreturn]] void refuseCommand(const std::string& word) {
    std::vector<std::string> known{"--help", "--version"};
    for (const Command& command : kCommands)
        known.emplace_back(command.name);
    const char* kind = word.starts_with('-') ? "option" : "command";
    refuse(std::string("unknown ") + kind + " \"" + word + "\"" + suggestion(word, known) +
           "; see \"tolvex --help\"");
}

}  // namespace

CommandLine parseCommandLine(std::span<const std::string> arguments) {
    requireUtf8(arguments);
    if (arguments.empty())
        refuse("a command is missing: export, inspect, snapshot, check or formats; see \"tolvex --help\"");
    const std::string& word = arguments.front();
    if (word == "--help") return ShowText{kHelpText};
    if (word == "--version") return ShowText{kVersionText};
    for (const Command& command : kCommands) {
        if (word == command.name) return command.parse(arguments.subspan(1));
    }
    refuseCommand(word);
}

}  // namespace velinor
