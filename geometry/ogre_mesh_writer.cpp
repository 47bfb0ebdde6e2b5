#include "geometry/ogre_mesh_writer.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "base/text.h"
#include "geometry/mesh_geometry.h"
#include "geometry/ogre_mesh_text.h"
#include "platform/text_file.h"

namespace velinor {
namespace {

// Ends a triangle object that a conversion made.
struct DeleteConverted {
    const host::Object* original;

    void operator()(host::TriObject* object) const {
        if (object != original) object->DeleteThis();
    }
};
using TriangleObject = std::unique_ptr<host::TriObject, DeleteConverted>;

// The node's object as triangles; null where the host cannot give it so.
TriangleObject triangleObjectOf(host::IGameNode& node, host::TimeValue time) {
    host::Object* object = node.GetMaxNode()->EvalWorldState(time);
    return {object == nullptr ? nullptr : object->ConvertToTriObject(time), DeleteConverted{object}};
}

// The node's mesh, ready for reading; null where it has none.
host::IGameMesh* meshOf(host::IGameNode& node) {
    host::IGameObject* object = node.GetIGameObject();
    if (object == nullptr || object->GetIGameType() != host::IGameObject::IGAME_MESH) return nullptr;
    return object->InitializeData() ? static_cast<host::IGameMesh*>(object) : nullptr;
}

bool isFinite(const host::Point3& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

float largestSide(const host::Box3& box) {
    return std::max({box.pmax.x - box.pmin.x, box.pmax.y - box.pmin.y, box.pmax.z - box.pmin.z});
}

// Tells what will not look as it should, whatever happens to the file.
void reportDoubts(const host::Mesh& mesh, const std::string& name, Report& report) {
    constexpr float kSmall = 0.01F;
    constexpr float kLarge = 1e5F;
    if (mesh.faces().empty()) return report.add(MessageId::meshEmpty, name);
    const auto notFinite = std::ranges::count_if(mesh.verts(), [](const auto& p) { return !isFinite(p); });
    if (notFinite > 0) {
        return report.add(
            MessageId::meshNotFinite, name,
            std::to_string(notFinite) + " of " + std::to_string(mesh.verts().size()) + " vertices");
    }
    host::Box3 box;
    for (const host::Point3& p : mesh.verts())
        box.Include(p);
    const float side = largestSide(box);
    const std::string size = "its largest side is " + std::to_string(side) + " units";
    if (side < kSmall) report.add(MessageId::meshSmall, name, size);
    if (side > kLarge) report.add(MessageId::meshLarge, name, size);
}

// Passes text on and lets a request to stop be seen between its pieces.
class WatchedSink final : public TextSink {
  public:
    WatchedSink(TextSink& sink, Progress& progress) : sink_(sink), progress_(progress) {}

    void write(std::string_view text) override {
        sink_.write(text);
        progress_.advance(0);
    }

  private:
    TextSink& sink_;
    Progress& progress_;
};

void writeFile(const MeshWriterContext& context, const std::string& baseName, const MeshGeometry& geometry,
               MeshMaterials& materials, int mapChannelCount) {
    const std::filesystem::path path = context.resourcesFolder / (baseName + ".mesh.xml");
    TextFile file(path);
    WatchedSink watched(file, context.progress);
    writeOgreMeshText(geometry, materials, mapChannelCount, watched);
    file.write("\n");
    if (!file.close()) {
        context.report.add(MessageId::fileNotWritten, utf8Path(path), file.error());
    } else if (!context.settings.cleanExportFolder) {  // which would remove it in the end
        context.report.addWritten(path, file.bytesWritten());
    }
}

}  // namespace

bool writeOgreMesh(const MeshWriterContext& context, host::IGameNode& node, const std::string& baseName) {
    const std::string name = toUtf8(node.GetName());
    host::IGameMesh* object = meshOf(node);
    const TriangleObject triangles =
        object == nullptr ? TriangleObject() : triangleObjectOf(node, context.host.GetAnimRange().Start());
    if (!triangles) {
        context.report.add(MessageId::meshNotTriangles, name);
        context.progress.advance(kProgressPerMesh);
        return true;
    }
    host::Mesh& mesh = triangles->GetMesh();
    mesh.buildNormals();
    reportDoubts(mesh, name, context.report);
    host::IGameMaterial* material = node.GetNodeMaterial();
    if (material == nullptr && context.settings.exportMaterials)
        context.report.add(MessageId::meshWithoutMaterial, name);
    MeshMaterials materials =
        nameMeshMaterials(material, object->GetActiveMatIDs(), context.settings, context.materialMap);
    StepProgress progress(context.progress, kProgressPerMesh, mesh.faces().size());
    const MeshGeometry geometry = weldMesh(mesh, materials, progress);
    writeFile(context, baseName, geometry, materials, mesh.getNumMaps());
    progress.finish();
    return true;
}

}  // namespace velinor
