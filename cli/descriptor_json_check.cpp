// The two JSON descriptors of a package: which members they have, and of which types.
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>

#include "cli/package_check.h"

namespace velinor {
namespace {

using nlohmann::json;

enum class MemberType { boolean, integer, number, object, string };

struct Member {
    const char* pointer;  // from the object that the table is for
    MemberType type;
};

using enum MemberType;

constexpr auto kWhereMembers = std::to_array<Member>({
    {"/camera", object},
    {"/camera/orientation", object},
    {"/camera/orientation/w", number},
    {"/camera/orientation/x", number},
    {"/camera/orientation/y", number},
    {"/camera/orientation/z", number},
    {"/camera/position", object},
    {"/camera/position/x", number},
    {"/camera/position/y", number},
    {"/camera/position/z", number},
    {"/deploy-name", string},
    {"/description", object},
    {"/description/full", string},
    {"/description/short", string},
    {"/environment", object},
    {"/environment/ambient", object},
    {"/environment/ambient/a", integer},
    {"/environment/ambient/b", number},
    {"/environment/ambient/g", number},
    {"/environment/ambient/r", number},
    {"/environment/background", object},
    {"/environment/background/a", integer},
    {"/environment/background/b", number},
    {"/environment/background/g", number},
    {"/environment/background/r", number},
    {"/environment/skybox", object},
    {"/environment/skybox/material", string},
    {"/isPrivate", string},
    {"/isPublic", string},
    {"/local", string},
    {"/main", string},
    {"/mainTag", string},
    {"/meta", object},
    {"/meta/affliliation", string},  // the runtime reads it under this spelling
    {"/meta/creator", string},
    {"/name", string},
    {"/price", integer},
    {"/tags", string},
    {"/thumbnails", string},
    {"/version", integer},
});

constexpr auto kLimitsMembers = std::to_array<Member>({
    {"/camera/limits", object},
    {"/camera/limits/max", object},
    {"/camera/limits/max/x", number},
    {"/camera/limits/max/y", number},
    {"/camera/limits/max/z", number},
    {"/camera/limits/min", object},
    {"/camera/limits/min/x", number},
    {"/camera/limits/min/y", number},
    {"/camera/limits/min/z", number},
});

constexpr auto kWebtableMembers = std::to_array<Member>({
    {"/autoResolution", boolean},
    {"/index", integer},
    {"/lastLoadedURL", string},
    {"/orientation", object},
    {"/orientation/w", number},
    {"/orientation/x", number},
    {"/orientation/y", number},
    {"/orientation/z", number},
    {"/position", object},
    {"/position/x", number},
    {"/position/y", number},
    {"/position/z", number},
    {"/resolution", object},
    {"/resolution/height", integer},
    {"/resolution/width", integer},
    {"/size", object},
    {"/size/height", number},
    {"/size/width", number},
    {"/url", string},
});

const char* typeName(MemberType type) {
    switch (type) {
        case boolean:
            return "true or false";
        case integer:
            return "a whole number";
        case number:
            return "a number";
        case object:
            return "an object";
        case string:
            return "a text";
    }
    return "";
}

bool hasType(const json& value, MemberType type) {
    switch (type) {
        case boolean:
            return value.is_boolean();
        case integer:
            return value.is_number_integer();
        case number:
            return value.is_number();
        case object:
            return value.is_object();
        case string:
            return value.is_string();
    }
    return false;
}

bool isObject(const json& value, const json::json_pointer& pointer) {
    return value.contains(pointer) && value.at(pointer).is_object();
}

// Collects the faults of one file.
class JsonCheck {
  public:
    explicit JsonCheck(const char* file) : file_(file) {}

    // The document; nothing, and a fault, where `text` is no JSON.
    std::optional<json> parse(const std::string& text) {
        try {
            return json::parse(text);
        } catch (const json::exception& error) {
            add(std::string("is no JSON: ") + error.what());
            return std::nullopt;
        }
    }

    // Checks the members of `value`, which stands at `place`. A member below what is no object is not told.
    void members(const json& value, std::span<const Member> members, const std::string& place) {
        if (!value.is_object()) return add(place + ": is no object");
        for (const Member& member : members)
            checkMember(value, member, place);
    }

    void add(const std::string& text) { faults_.push_back({file_, text}); }

    std::vector<PackageFault> faults() && { return std::move(faults_); }

  private:
    void checkMember(const json& value, const Member& member, const std::string& place) {
        const json::json_pointer pointer(member.pointer);
        if (!value.contains(pointer)) {
            if (isObject(value, pointer.parent_pointer())) add(place + member.pointer + ": is missing");
            return;
        }
        if (hasType(value.at(pointer), member.type)) return;
        add(place + member.pointer + ": is " + value.at(pointer).type_name() + ", not " +
            typeName(member.type));
    }

    const char* file_;
    std::vector<PackageFault> faults_;
};

}  // namespace

std::vector<PackageFault> checkWhereJson(const std::string& text) {
    JsonCheck check("where.json");
    const auto document = check.parse(text);
    if (!document) return std::move(check).faults();
    check.members(*document, kWhereMembers, "");
    if (document->contains(json::json_pointer("/camera/limits")))
        check.members(*document, kLimitsMembers, "");
    if (document->is_object() && document->value("main", json()) != "index.jsx") {
        check.add("/main: does not name \"index.jsx\"");
    }
    return std::move(check).faults();
}

std::vector<PackageFault> checkWebtablesJson(const std::string& text) {
    JsonCheck check("webtables.json");
    const auto document = check.parse(text);
    if (!document) return std::move(check).faults();
    if (!document->is_array()) {
        check.add("is no list");
        return std::move(check).faults();
    }
    for (std::size_t i = 0; i < document->size(); ++i) {
        check.members((*document)[i], kWebtableMembers, "/" + std::to_string(i));
    }
    return std::move(check).faults();
}

}  // namespace velinor
