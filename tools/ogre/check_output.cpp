#include "tools/ogre/check_output.h"

#include <nlohmann/json.hpp>

namespace velinor {
namespace {

std::string oneLine(std::string text) {
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
    }
    return text;
}

nlohmann::json jsonOf(const std::vector<Finding>& findings) {
    auto list = nlohmann::json::array();
    for (const Finding& finding : findings)
        list.push_back({{"file", finding.file}, {"text", finding.text}});
    return list;
}

nlohmann::json jsonOf(const MeshSummary& mesh) {
    auto submeshes = nlohmann::json::array();
    for (const SubmeshSummary& submesh : mesh.submeshes)
        submeshes.push_back({{"material", submesh.material}, {"triangles", submesh.triangles}});
    return {{"vertices", mesh.vertices},
            {"bounds", {{"min", mesh.bounds.min}, {"max", mesh.bounds.max}}},
            {"submeshes", submeshes}};
}

}  // namespace

std::string linesOf(const std::vector<Finding>& findings) {
    std::string lines;
    for (const Finding& finding : findings)
        lines += oneLine(finding.file + ": " + finding.text) + "\n";
    return lines;
}

std::string jsonOf(const CheckReport& report) {
    auto meshes = nlohmann::json::object();
    for (const auto& [name, mesh] : report.meshes)
        meshes[name] = jsonOf(mesh);
    const nlohmann::json json{
        {"faults", jsonOf(report.faults)}, {"notes", jsonOf(report.notes)}, {"meshes", meshes}};
    // Names come from files and need not be UTF-8.
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace velinor
