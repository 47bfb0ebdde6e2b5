// Reads whole snapshots: the top level of the document.
#include <algorithm>

#include "hosts/snapshot/document_builder.h"
#include "hosts/snapshot/object_reader.h"
#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_cbor.h"
#include "hosts/snapshot/snapshot_io.h"
#include "hosts/snapshot/snapshot_json.h"
#include "hosts/snapshot/snapshot_names.h"
#include "hosts/snapshot/value_reader.h"

namespace velinor {
namespace {

constexpr std::string_view kMembers[] = {"format", "version", "animationStart", "assetFolders", "nodes",
                                         "roots",  "meshes",  "materials",      "maps"};
constexpr std::string_view kRequired[] = {"format", "version", "nodes", "roots"};
constexpr std::string_view kLists[] = {"nodes", "meshes", "materials", "maps"};

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isIn(std::span<const std::string_view> names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

class SceneReader final : public DocumentConsumer {
  public:
    explicit SceneReader(std::string_view file) : file_(file) {}

    bool beginMember(std::string_view name, const DocumentTape& tape) override {
        if (isIn(seen_, name)) fail(tape.nextPointer(), "the member is there twice");
        if (name == kExtrasName) {
            seen_.push_back(kExtrasName);
            return false;
        }
        const auto known = std::find(std::begin(kMembers), std::end(kMembers), name);
        if (known == std::end(kMembers)) failUnknown(name);
        member_ = *known;
        seen_.push_back(member_);
        return isIn(kLists, name);
    }

    void takeValue(const Value& value) override {
        if (member_ == "format") {
            requireKind(value, ValueKind::text);
            if (value.text() != kFormatName) {
                value.fail("this is not a scene snapshot: the format is " + quoted(value.text()) + ", not " +
                           quoted(kFormatName));
            }
        } else if (member_ == "version") {
            const auto version = readInteger<std::int32_t>(value);
            if (version != kFormatVersion) {
                value.fail("version " + std::to_string(version) +
                           " is not known; this program reads version " + std::to_string(kFormatVersion));
            }
        } else if (member_ == "animationStart") {
            scene_.animationStart = readInteger<std::int32_t>(value);
        } else if (member_ == "assetFolders") {
            requireKind(value, ValueKind::list);
            value.forEachElement(
                [&](const Value& folder) { scene_.assetFolders.push_back(readText(folder)); });
        } else if (member_ == "roots") {
            scene_.roots = readReferences(value);
        } else {
            requireKind(value, ValueKind::list);  // a list comes element by element
        }
    }

    void takeElement(const Value& value) override {
        if (member_ == "nodes") {
            scene_.nodes.push_back(readNode(value, latestInstances_));
            if (scene_.nodes.back().instances) latestInstances_ = scene_.nodes.back().instances;
        } else if (member_ == "meshes") {
            scene_.meshes.push_back(readMesh(value));
        } else if (member_ == "materials") {
            scene_.materials.push_back(readMaterial(value));
        } else {
            scene_.maps.push_back(readMap(value));
        }
    }

    // To be called at the end of the document.
    SceneSnapshot finish() {
        for (const std::string_view name : kRequired) {
            if (isIn(seen_, name)) continue;
            fail({}, (name == "format" ? "this is not a scene snapshot: the member " : "the member ") +
                         quoted(name) + " is missing");
        }
        return std::move(scene_);
    }

  private:
    [[noreturn]] void fail(std::string_view pointer, std::string_view problem) const {
        throw SceneError(placedMessage(file_, pointer, problem));
    }

    [[noreturn]] void failUnknown(std::string_view name) const {
        const bool isOther = !isIn(seen_, "format");
        const std::string problem = unknownMemberProblem(name, kMembers);
        fail({}, isOther ? problem + "; a scene snapshot begins with \"format\": " + quoted(kFormatName)
                         : problem);
    }

    std::string_view file_;
    SceneSnapshot scene_;
    std::vector<std::string_view> seen_;
    std::string_view member_;
    std::optional<InstanceList> latestInstances_;
};

}  // namespace

SnapshotEncoding guessSnapshotEncoding(std::string_view bytes) {
    if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
    const auto first = bytes.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && bytes[first] == '{' ? SnapshotEncoding::json
                                                                  : SnapshotEncoding::cbor;
}

SceneSnapshot readSnapshot(std::string_view bytes, SnapshotEncoding encoding, std::string_view file) {
    if (bytes.empty()) throw SceneError(placedMessage(file, {}, "the file is empty"));
    SceneReader reader(file);
    DocumentBuilder builder(file, reader);
    if (encoding == SnapshotEncoding::json) {
        decodeJson(bytes, builder);
    } else {
        decodeCbor(bytes, builder);
    }
    SceneSnapshot scene = reader.finish();
    checkSnapshot(scene, file);
    return scene;
}

}  // namespace velinor
