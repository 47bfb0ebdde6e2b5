#include "tests/acceptance/mutants.h"

#include <array>
#include <random>

namespace velinor {

std::string mutantOf(const std::string& bytes, std::uint32_t number) {
    std::mt19937 random(number);
    // The distributions of the standard library give other numbers on other systems.
    const auto below = [&random](std::size_t end) { return static_cast<std::size_t>(random()) % end; };
    if (number % 4 == 3) return bytes.substr(0, 1 + below(bytes.size()));

    constexpr std::array<std::size_t, 8> kChanges{1, 1, 1, 2, 2, 4, 8, 16};
    const std::size_t kind = number % 4;
    std::string mutant = bytes;
    for (std::size_t changes = kChanges[below(kChanges.size())]; changes > 0; --changes) {
        char& changed = mutant[below(mutant.size())];
        const char flipped = static_cast<char>(changed ^ (1 << below(8)));
        const char other = kind == 0 ? bytes[below(bytes.size())] : static_cast<char>(below(256));
        changed = kind == 2 ? flipped : other;
    }
    return mutant;
}

}  // namespace velinor
