// Damaged versions of a file, the same ones on every run and every system.
#pragma once

#include <cstdint>
#include <string>

namespace velinor {

// The damaged version of `bytes` with that number: every fourth is cut off somewhere, the others have 1 to 16
// bytes changed. Half of the changed bytes become others of the same file, so that text stays text and
// structures are hit, the other half become any bytes. `bytes` is not empty.
std::string mutantOf(const std::string& bytes, std::uint32_t number);

}  // namespace velinor
