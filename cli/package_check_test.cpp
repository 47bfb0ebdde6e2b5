#include "cli/package_check.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace velinor {
namespace {

using nlohmann::json;

constexpr const char* kWhere = R"({
    "camera": {"orientation": {"w": 1.0, "x": 0.0, "y": 0.0, "z": 0.0},
               "position": {"x": 0.0, "y": 0.0, "z": 0.0}},
    "deploy-name": "test", "description": {"full": "", "short": ""},
    "environment": {"ambient": {"a": 1, "b": 0.2, "g": 0.2, "r": 0.2},
                    "background": {"a": 1, "b": 0.2, "g": 0.2, "r": 0.2},
                    "skybox": {"material": "FXUnlitSkyboxCubic"}},
    "isPrivate": "false", "isPublic": "false", "local": "./resources", "main": "index.jsx", "mainTag": "",
    "meta": {"affliliation": "", "creator": ""}, "name": "", "price": 0, "tags": "[]", "thumbnails": "[]",
    "version": 0})";

constexpr const char* kWebtable =
    R"({"autoResolution": true, "index": 7, "lastLoadedURL": "velinor:///default",
    "orientation": {"w": 1.0, "x": 0.0, "y": 0.0, "z": 0.0}, "position": {"x": 0.0, "y": 0.0, "z": 0.0},
    "resolution": {"height": 1200, "width": 1600}, "size": {"height": 3.0, "width": 4.0}, "url": ""})";

std::string textsOf(const std::vector<PackageFault>& faults) {
    std::string texts;
    for (const PackageFault& fault : faults)
        texts += fault.text + "\n";
    return texts;
}

TEST(CheckWhereJson, FindsNothingInAWholeDocument) {
    EXPECT_EQ(textsOf(checkWhereJson(kWhere)), "");
}

struct ChangedMember {
    const char* pointer;
    json value;  // null: the member is taken out
    const char* fault;
};

TEST(CheckWhereJson, FindsMembersThatAreMissingOrOfAnotherType) {
    const ChangedMember cases[] = {
        {"/isPrivate", false, "/isPrivate: is boolean, not a text\n"},
        {"/tags", json::array(), "/tags: is array, not a text\n"},
        {"/version", 1.5, "/version: is number, not a whole number\n"},
        {"/camera/position/x", "0", "/camera/position/x: is string, not a number\n"},
        {"/meta", nullptr, "/meta: is null, not an object\n"},
        {"/main", "other.jsx", "/main: does not name \"index.jsx\"\n"},
    };
    for (const auto& [pointer, value, fault] : cases) {
        json document = json::parse(kWhere);
        document[json::json_pointer(pointer)] = value;
        EXPECT_EQ(textsOf(checkWhereJson(document.dump())), fault) << pointer;
    }
    json document = json::parse(kWhere);
    document["meta"].erase("affliliation");
    document["camera"]["limits"] = {{"max", {{"x", 1.0}, {"y", 1.0}, {"z", 1.0}}}};
    EXPECT_EQ(textsOf(checkWhereJson(document.dump())),
              "/meta/affliliation: is missing\n/camera/limits/min: is missing\n");
}

TEST(CheckWhereJson, TakesAnything) {
    for (const char* text :
         {"", "{", "[]", "1", "null", "\"\xFF\"", "{\"camera\": 1}", "{\"camera\": {\"limits\": 1}}"}) {
        EXPECT_NE(textsOf(checkWhereJson(text)), "") << text;
    }
}

TEST(CheckWebtablesJson, FindsFaultsInEachPanel) {
    EXPECT_EQ(textsOf(checkWebtablesJson("[]\n")), "");
    EXPECT_EQ(textsOf(checkWebtablesJson("[" + std::string(kWebtable) + "]")), "");
    json broken = json::parse(kWebtable);
    broken["resolution"]["height"] = 1200.5;
    broken.erase("url");
    EXPECT_EQ(textsOf(checkWebtablesJson("[" + std::string(kWebtable) + "," + broken.dump() + "]")),
              "/1/resolution/height: is number, not a whole number\n/1/url: is missing\n");
    EXPECT_EQ(textsOf(checkWebtablesJson("{}")), "is no list\n");
    EXPECT_EQ(textsOf(checkWebtablesJson("[1]")), "/0: is no object\n");
}

}  // namespace
}  // namespace velinor
