// Reads meshes.
#include <algorithm>
#include <charconv>

#include "hosts/snapshot/object_reader.h"
#include "hosts/snapshot/snapshot_names.h"
#include "hosts/snapshot/value_reader.h"

namespace velinor {
namespace {

constexpr std::string_view kMeshMembers[] = {
    "vertices",    "faces", "smoothing",        "materialIds",   "activeMaterialIds",
    "mapChannels", "maps",  "specifiedNormals", "renderVertices"};
constexpr std::string_view kChannelMembers[] = {"vertices", "faces"};
constexpr std::string_view kRenderVertexMembers[] = {"specified", "normals"};
constexpr std::string_view kNormalMembers[] = {"normal", "smoothing"};

// The number of channels, the highest plus 1, must be an int32, too.
constexpr std::int32_t kHighestChannel = std::numeric_limits<std::int32_t>::max() - 1;

// A list of the mesh has one item for each of another; an empty one would read as if it were not there.
void requireCount(const Value& value, std::size_t found, std::size_t expected, std::string_view item) {
    if (found == expected) return;
    value.fail(std::to_string(found) + " entries where " + std::to_string(expected) + " are expected, 1 a " +
               std::string(item));
}

std::int32_t readChannelNumber(std::string_view name, const Value& place) {
    std::int32_t number = -1;
    const auto result = std::from_chars(name.data(), name.data() + name.size(), number);
    const bool isCanonical = result.ec == std::errc() && number >= 0 && std::to_string(number) == name;
    if (!isCanonical || number > kHighestChannel) {
        place.fail(quoted(name) + " is not a channel number; write it like \"0\" or \"12\"");
    }
    return number;
}

SnapshotMapChannel readChannel(const Value& value) {
    const Members members(value, kChannelMembers);
    SnapshotMapChannel channel;
    channel.vertices = readFlatPoints(members.required("vertices"));
    if (const auto faces = members.find("faces")) channel.faces = readFlatFaces(*faces);
    return channel;
}

std::map<std::int32_t, SnapshotMapChannel> readChannels(const Value& value) {
    requireKind(value, ValueKind::object);
    std::map<std::int32_t, SnapshotMapChannel> channels;
    value.forEachMember([&](std::string_view name, const Value& channel) {
        if (name == kExtrasName) return;
        const std::int32_t number = readChannelNumber(name, channel);
        if (!channels.emplace(number, readChannel(channel)).second) channel.fail("the member is there twice");
    });
    return channels;
}

std::vector<host::RNormal> readNormals(const Value& value) {
    requireKind(value, ValueKind::list);
    std::vector<host::RNormal> normals;
    normals.reserve(value.count());
    value.forEachElement([&](const Value& element) {
        const Members members(element, kNormalMembers);
        normals.push_back({readPoint3(members.required("normal")),
                           readInteger<std::uint32_t>(members.required("smoothing"))});
    });
    return normals;
}

std::optional<SnapshotRenderVertex> readRenderVertex(const Value& value) {
    if (value.kind() == ValueKind::null) return std::nullopt;
    const Members members(value, kRenderVertexMembers);
    const auto specified = members.find("specified");
    const auto normals = members.find("normals");
    if (specified.has_value() == normals.has_value()) {
        value.fail("a render vertex has either \"specified\" or \"normals\"");
    }
    if (specified) return readPoint3(*specified);
    return readNormals(*normals);
}

std::vector<std::optional<SnapshotRenderVertex>> readRenderVertices(const Value& value) {
    requireKind(value, ValueKind::list);
    std::vector<std::optional<SnapshotRenderVertex>> vertices;
    vertices.reserve(value.count());
    value.forEachElement([&](const Value& element) { vertices.push_back(readRenderVertex(element)); });
    return vertices;
}

}  // namespace

SnapshotMesh readMesh(const Value& value) {
    const Members members(value, kMeshMembers);
    SnapshotMesh mesh;
    mesh.vertices = readFlatPoints(members.required("vertices"));
    mesh.faces = readFlatFaces(members.required("faces"));
    if (const auto smoothing = members.find("smoothing")) {
        mesh.smoothing = readFlatMasks(*smoothing);
        requireCount(*smoothing, mesh.smoothing.size(), mesh.faces.size(), "face");
    }
    if (const auto ids = members.find("materialIds")) {
        mesh.materialIds = readFlatMaterialIds(*ids);
        requireCount(*ids, mesh.materialIds.size(), mesh.faces.size(), "face");
    }
    if (const auto ids = members.find("activeMaterialIds")) mesh.activeMaterialIds = readIntegers(*ids);
    if (const auto count = members.find("mapChannels")) {
        mesh.mapChannels =
            static_cast<std::int32_t>(readIntegerWithin(*count, 0, std::numeric_limits<std::int32_t>::max()));
    }
    if (const auto maps = members.find("maps")) mesh.maps = readChannels(*maps);
    if (const auto normals = members.find("specifiedNormals")) {
        mesh.specifiedNormals = readFlatPoints(*normals);
        requireCount(*normals, mesh.specifiedNormals.size(), mesh.vertices.size(), "vertex");
    }
    if (const auto vertices = members.find("renderVertices")) {
        mesh.renderVertices = readRenderVertices(*vertices);
        requireCount(*vertices, mesh.renderVertices.size(), mesh.vertices.size(), "vertex");
    }
    return mesh;
}

}  // namespace velinor
