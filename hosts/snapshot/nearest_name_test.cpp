#include "hosts/snapshot/nearest_name.h"

#include <gtest/gtest.h>

#include <string>

namespace velinor {
namespace {

constexpr std::string_view kKnown[] = {"name", "children", "material", "object", "min", "max"};

TEST(NearestName, FindsAMisspeltName) {
    const struct {
        std::string name;
        std::string nearest;
    } cases[] = {
        {"nmae", "name"},
        {"NAME", "name"},
        {"childern", "children"},
        {"materials", "material"},
        {"obj", ""},
        {"something", ""},
        {"", ""},
        {"mi", "min"},
        {"mix", "min"},
        {"x", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(nearestName(c.name, kKnown), c.nearest) << c.name;
}

TEST(NearestName, TakesLongNames) {
    EXPECT_EQ(nearestName(std::string(1 << 20, 'n'), kKnown), "");
}

}  // namespace
}  // namespace velinor
