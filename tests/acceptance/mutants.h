// Damaged versions of a file, the same ones on every run and every system.
#pragma once

#include <cstdint>
#include <string>

namespace velinor {

// The damaged version of `bytes` with that number. Every fourth is cut off somewhere. The others have 1 to 16
// bytes changed, mostly few, since much damage is refused early and shows little: to others of the same file,
// so that text stays text, to any bytes, or by one bit. `bytes` is not empty.
std::string mutantOf(const std::string& bytes, std::uint32_t number);

}  // namespace velinor
