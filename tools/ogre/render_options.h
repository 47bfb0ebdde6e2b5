// The arguments of render_package.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace velinor {

enum class ViewChoice {
    start,  // the package's start camera
    frame,  // a view of everything that is in the scene
    best,   // the start camera where it shows something, else a view of everything
};

struct RenderOptions {
    std::filesystem::path package;
    std::filesystem::path picture;  // a PNG file
    std::filesystem::path programs;
    unsigned width = 1024;
    unsigned height = 768;
    unsigned samples = 4;  // a pixel
    ViewChoice view = ViewChoice::best;
};

// Arguments that are wrong. what() says which and why.
class ArgumentError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

extern const char* const kRenderUsage;

// Throws ArgumentError.
RenderOptions parseRenderOptions(const std::vector<std::string>& arguments);

}  // namespace velinor
