// Names of the snapshot format that reading, checking and writing share.
#pragma once

#include <array>
#include <string_view>

namespace velinor {

inline constexpr std::string_view kFormatName = "tolvex-scene";
inline constexpr int kFormatVersion = 1;

// The member that every object may have and every reader passes over.
inline constexpr std::string_view kExtrasName = "extras";

// By type code.
inline constexpr std::array<std::string_view, 7> kObjectTypeNames = {"unknown", "light",  "mesh", "spline",
                                                                     "camera",  "helper", "bone"};

// A host tells the number of a render vertex's normals in 8 bits.
inline constexpr std::size_t kMostRenderNormals = 255;

}  // namespace velinor
