// A program that stands for 3ds Max in a folder into which the archive was unpacked: it exports one scene
// with the plug-in and all that lies beside it.
#include "hosts/max/max_sdk.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "hosts/max/max_values.h"
#include "hosts/snapshot/snapshot_host.h"
#include "platform/temporary_folder.h"
#include "tests/max/golden_cases.h"
#include "tests/max/max_stage.h"
#include "tests/max/plug_in_library.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

bool hasKind(const fs::path& folder, const std::string& ending) {
    return std::ranges::any_of(fs::directory_iterator(folder), [&](const fs::directory_entry& entry) {
        return entry.path().filename().string().ends_with(ending) && entry.file_size() > 0;
    });
}

// The golden scene has a mesh, and a material with colours: the tools and libvips are needed.
void exportScene(const fs::path& plugIn) {
    const PlugInLibrary library(plugIn);
    const SceneSnapshot scene = goldenScene("physical-materials");
    const auto host = makeSnapshotHost(scene, caseFolder("physical-materials"));
    MaxStage stage(*host);
    const TemporaryFolder target;
    const SdkString name = maxString((target.path() / "package.jsx").u16string());
    library.exporter()->DoExport(name.c_str(), nullptr, nullptr, 1, 0);
    std::string log;
    for (const std::string& line : stage.stageCore.log)
        log += line + "\n";
    for (const char* ending : {".mesh", ".mesh_phy.obj", ".material", ".png"}) {
        const fs::path resources = target.path() / "package/resources";
        if (!fs::is_directory(resources) || !hasKind(resources, ending))
            throw std::runtime_error(std::string("the package has no ") + ending + "; the log:\n" + log);
    }
}

}  // namespace
}  // namespace velinor

int main() {
    try {
        velinor::exportScene(std::filesystem::absolute("Plugins/tolvex.dle"));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
