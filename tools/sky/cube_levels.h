// A cube map with its mipmaps, in linear light.
#pragma once

#include <functional>
#include <vector>

#include "tools/sky/cube_map.h"
#include "tools/sky/direction.h"

namespace velinor {

// One mipmap level of a cube map: six square faces.
class CubeLevel {
  public:
    explicit CubeLevel(int size) : size_(size), texels_(static_cast<std::size_t>(kCubeFaces) * size * size) {}

    // Texels along an edge of a face.
    int size() const { return size_; }

    // The texel in `column` and `row`, from the top left of the face.
    Rgb& at(int face, int column, int row) { return texels_[index(face, column, row)]; }
    const Rgb& at(int face, int column, int row) const { return texels_[index(face, column, row)]; }

    // The place of the centre of column or row `i`, -1 to 1. For i = -1 and size() it lies beyond the edge.
    double centre(int i) const { return (2.0 * i + 1) / size_ - 1; }

    // The texel that `direction` falls on.
    const Rgb& towards(const Direction& direction) const;

  private:
    std::size_t index(int face, int column, int row) const {
        return (static_cast<std::size_t>(face) * size_ + row) * size_ + column;
    }

    int size_;
    std::vector<Rgb> texels_;
};

// The light from a direction of length 1.
using ColourOf = std::function<Rgb(const Direction&)>;

// All levels of the cube map of `colour`, from `size` texels a face (a power of two) to 1, in linear light.
// Each texel is a mean over its part of the sphere, in the small levels over the parts around it, too. In
// every level but the first, texels on both sides of an edge are equal, and so are the three at a corner:
// drawing code that filters within a face shows no seams.
std::vector<CubeLevel> makeCubeLevels(int size, const ColourOf& colour);

}  // namespace velinor
