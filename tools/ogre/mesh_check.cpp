#include "tools/ogre/mesh_check.h"

#include <OgreMaterialManager.h>
#include <OgreMesh.h>
#include <OgreMeshManager.h>
#include <OgreMeshSerializer.h>
#include <OgreSubMesh.h>

#include <memory>

#include "tools/ogre/headless_ogre.h"
#include "tools/ogre/isolated_files.h"

namespace velinor {
namespace {

MeshSummary summaryOf(const MeshBinary& mesh) {
    MeshSummary summary;
    summary.vertices = mesh.vertexCount;
    summary.bounds = mesh.bounds.value_or(MeshBounds());
    for (const MeshBinarySubmesh& submesh : mesh.submeshes)
        summary.submeshes.push_back({std::string(submesh.material), submesh.indexCount() / 3});
    return summary;
}

// Whether the mesh has nothing against it.
bool checkStrictly(const PackageFiles& package, const std::string& name, CheckReport& report) {
    const std::string file = kResources + name;
    try {
        const std::string bytes = package.readResource(name);
        const MeshBinary mesh = readMeshBinary(bytes);
        report.meshes[name] = summaryOf(mesh);
        const std::vector<std::string> faults = meshFaults(mesh);
        for (const std::string& fault : faults)
            report.fault(file, fault);
        return faults.empty();
    } catch (const ByteFault& fault) {
        report.fault(file, fault.what());
    } catch (const PackageError& error) {
        report.fault(file, error.what());
    }
    return false;
}

// Gives OGRE a material for each name that a mesh has; without one it would forget the name.
class MaterialMaker : public Ogre::MeshSerializerListener {
  public:
    void processMaterialName(Ogre::Mesh* mesh, Ogre::String* name) override {
        Ogre::MaterialManager::getSingleton().createOrRetrieve(*name, mesh->getGroup());
    }
    void processSkeletonName(Ogre::Mesh* /*mesh*/, Ogre::String* /*name*/) override {}
    void processMeshCompleted(Ogre::Mesh* /*mesh*/) override {}
};

// Reads meshes with OGRE and says what it got: "mesh", vertex count, then material and triangle count of each
// submesh. Faults are "fault", text.
class OgreMeshReader {
  public:
    explicit OgreMeshReader(const PackageFiles& package)
        : package_(package), ogre_([this](const std::string& text) {
              send({"fault", "OGRE logs " + text});
          }) {
        serializer_.setListener(&materials_);
    }

    void look(const std::string& name, const SendFileMessage& send) {
        send_ = &send;
        try {
            const std::string bytes = package_.readResource(name);
            auto& meshes = Ogre::MeshManager::getSingleton();
            const Ogre::MeshPtr mesh = meshes.createManual(name, Ogre::RGN_DEFAULT);
            Ogre::DataStreamPtr stream = streamOver(name, bytes);
            serializer_.importMesh(stream, mesh.get());
            send(messageOf(*mesh));
            meshes.remove(mesh);
        } catch (const std::exception& error) {
            send({"fault", std::string("OGRE says ") + error.what()});
        }
    }

  private:
    void send(const FileMessage& message) const {
        if (send_ != nullptr) (*send_)(message);
    }

    static FileMessage messageOf(const Ogre::Mesh& mesh) {
        const std::size_t vertices =
            mesh.sharedVertexData == nullptr ? 0 : mesh.sharedVertexData->vertexCount;
        FileMessage message{"mesh", std::to_string(vertices)};
        for (const Ogre::SubMesh* submesh : mesh.getSubMeshes()) {
            message.push_back(submesh->getMaterialName());
            message.push_back(std::to_string(submesh->indexData->indexCount / 3));
        }
        return message;
    }

    const PackageFiles& package_;
    const SendFileMessage* send_ = nullptr;
    HeadlessOgre ogre_;
    MaterialMaker materials_;
    Ogre::MeshSerializer serializer_;
};

FileMessage messageOf(const MeshSummary& mesh) {
    FileMessage message{"mesh", std::to_string(mesh.vertices)};
    for (const SubmeshSummary& submesh : mesh.submeshes) {
        message.push_back(submesh.material);
        message.push_back(std::to_string(submesh.triangles));
    }
    return message;
}

}  // namespace

void checkMeshes(const PackageFiles& package, CheckReport& report) {
    std::vector<std::string> sound;
    for (const std::string& name : package.resources(".mesh")) {
        if (checkStrictly(package, name, report)) sound.push_back(name);
    }
    IsolatedFiles work;
    work.prepare = [&]() -> LookAtFile {
        const auto reader = std::make_shared<OgreMeshReader>(package);
        return [reader](const std::string& name, const SendFileMessage& send) { reader->look(name, send); };
    };
    work.receive = [&](const std::string& name, const FileMessage& message) {
        const std::string file = kResources + name;
        if (message.at(0) == "fault") {
            report.fault(file, message.at(1));
        } else if (message != messageOf(report.meshes.at(name))) {
            report.fault(file, "OGRE reads other vertices, materials or triangles than the file has");
        }
    };
    work.broken = [&](const std::string& name, const std::string& end) {
        report.fault(kResources + name, "reading it with OGRE ends with " + end);
    };
    lookAtFiles(sound, work);
}

}  // namespace velinor
