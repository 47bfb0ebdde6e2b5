#include "tests/acceptance/mutants.h"

#include <random>

namespace velinor {

std::string mutantOf(const std::string& bytes, std::uint32_t number) {
    constexpr std::uint32_t kMostChanges = 16;
    std::mt19937 random(number);
    // The distributions of the standard library give other numbers on other systems.
    const auto below = [&random](std::size_t end) { return static_cast<std::size_t>(random()) % end; };
    if (number % 4 == 3) return bytes.substr(0, 1 + below(bytes.size()));
    std::string mutant = bytes;
    for (std::size_t changes = 1 + below(kMostChanges); changes > 0; --changes) {
        char& changed = mutant[below(mutant.size())];
        changed = below(2) == 0 ? bytes[below(bytes.size())] : static_cast<char>(below(256));
    }
    return mutant;
}

}  // namespace velinor
