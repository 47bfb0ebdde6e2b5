#include "tools/ogre/package_check.h"

#include "tools/ogre/mesh_check.h"
#include "tools/ogre/reference_check.h"
#include "tools/ogre/script_check.h"
#include "tools/ogre/texture_check.h"

namespace velinor {

CheckReport checkPackageWithOgre(const std::filesystem::path& folder, const std::filesystem::path& programs) {
    const PackageFiles package(folder);
    CheckReport report;
    const ScriptContent scripts = checkScripts(package, programs, report);
    checkTextures(package, scripts.textures, report);
    checkMeshes(package, report);
    checkReferences(package, scripts, report);
    return report;
}

}  // namespace velinor
