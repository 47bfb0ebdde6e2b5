#include "tools/ogre/render_options.h"

#include <charconv>
#include <string_view>

#include "tools/ogre/program_folder.h"

namespace velinor {
namespace {

unsigned parseNumber(std::string_view text, unsigned least, unsigned most, const std::string& option) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < least || value > most) {
        throw ArgumentError(option + ": \"" + std::string(text) + "\" is no number from " +
                            std::to_string(least) + " to " + std::to_string(most));
    }
    return value;
}

void parseSize(const std::string& value, RenderOptions& options) {
    constexpr unsigned kLargest = 8192;
    const std::size_t cross = value.find('x');
    if (cross == std::string::npos)
        throw ArgumentError("--size: \"" + value + "\" is no size; write 1024x768");
    options.width = parseNumber(std::string_view(value).substr(0, cross), 1, kLargest, "--size");
    options.height = parseNumber(std::string_view(value).substr(cross + 1), 1, kLargest, "--size");
}

void parseView(const std::string& value, RenderOptions& options) {
    if (value != "start" && value != "frame")
        throw ArgumentError("--camera: \"" + value + "\" is no camera; write start or frame");
    options.view = value == "start" ? ViewChoice::start : ViewChoice::frame;
}

void parseOption(const std::string& option, const std::string& value, RenderOptions& options) {
    if (option == "--size") {
        parseSize(value, options);
    } else if (option == "--aa") {
        options.samples = parseNumber(value, 0, 16, option);
    } else if (option == "--camera") {
        parseView(value, options);
    } else if (option == "--programs") {
        options.programs = value;
    } else {
        throw ArgumentError("there is no option " + option);
    }
}

}  // namespace

const char* const kRenderUsage =
    "usage: render_package [OPTIONS] PACKAGE OUT.png\n"
    "Draws a package into a picture. It needs an X display with OpenGL 3.3; xvfb-run -a provides one.\n"
    "  --size WxH            pixels (1024x768)\n"
    "  --aa N                samples a pixel (4)\n"
    "  --camera start|frame  the package's start camera, or a view of everything; without the option, the\n"
    "                        start camera where it shows something\n"
    "  --programs DIR        the GPU programs (beside this program: ogre_programs)\n"
    "The exit status is 0 with a picture, 1 with one that lacks something, 2 without one.\n";

RenderOptions parseRenderOptions(const std::vector<std::string>& arguments) {
    RenderOptions options;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (!arguments[i].starts_with('-')) {
            names.push_back(arguments[i]);
        } else if (i + 1 == arguments.size()) {
            throw ArgumentError(arguments[i] + ": the value is missing");
        } else {
            parseOption(arguments[i], arguments[i + 1], options);
            ++i;
        }
    }
    if (names.size() != 2) throw ArgumentError("a package and the name of a picture are needed");
    options.package = names[0];
    options.picture = names[1];
    if (options.picture.extension() != ".png")
        throw ArgumentError(names[1] + ": the picture's name has to end with .png");
    if (options.programs.empty()) options.programs = programFolder();
    return options;
}

}  // namespace velinor
