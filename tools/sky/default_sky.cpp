#include "tools/sky/default_sky.h"

#include <algorithm>
#include <cmath>

#include "tools/sky/dds_file.h"
#include "tools/sky/sky_colour.h"

namespace velinor {
namespace {

// The face in each place of the cross; -1 for none.
constexpr int kCross[3][4] = {{-1, 2, -1, -1}, {1, 4, 0, 5}, {-1, 3, -1, -1}};

}  // namespace

std::string defaultSkyFile() {
    return ddsFile(makeCubeLevels(kDefaultSkySize, skyColour));
}

std::string crossPicture(const CubeLevel& level) {
    const int size = level.size();
    std::string picture = "P6\n" + std::to_string(4 * size) + " " + std::to_string(3 * size) + "\n255\n";
    for (int y = 0; y < 3 * size; ++y) {
        for (int x = 0; x < 4 * size; ++x) {
            const int face = kCross[y / size][x / size];
            const Rgb texel = face < 0 ? Rgb{} : level.at(face, x % size, y % size);
            for (const double part : texel)
                picture += static_cast<char>(std::clamp(static_cast<int>(std::floor(part + 0.5)), 0, 255));
        }
    }
    return picture;
}

}  // namespace velinor
