#include "descriptors/webtable_descriptor.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "scene/node_name.h"
#include "scene/transform.h"

namespace velinor {
namespace {

using host::Point3;
using host::Quat;
using nlohmann::json;

constexpr std::int32_t kAbsent = -1;
constexpr std::int32_t kDefaultWidth = 1600;

// A panel's extent in scene units, in object space.
struct PanelSize {
    float width;
    float height;
};

// The number at the end of a panel's name; 0 without one. At most nine digits count, so it fits.
int panelNumber(const std::string& cleanName, const NamePattern& numericSuffixPattern) {
    constexpr std::size_t kDigits = 9;
    const auto suffix = numericSuffixPattern.find(cleanName);
    return suffix ? std::atoi(std::string(suffix->substr(1, kDigits)).c_str()) : 0;
}

// Truncates toward zero; what no 32-bit integer holds gives the smallest one, as the processor's conversion
// does.
std::int32_t truncated(float value) {
    constexpr float kLimit = 2147483648.0F;
    if (!(value >= -kLimit && value < kLimit)) return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

std::int32_t userInteger(const host::INode& node, host::HostText key) {
    std::int32_t value = kAbsent;
    node.GetUserPropInt(key, value);
    return value;
}

json resolution(const host::INode& node, const PanelSize& size) {
    std::int32_t width = userInteger(node, u"qv_wt_res_w");
    std::int32_t height = userInteger(node, u"qv_wt_res_h");
    if (width == kAbsent) width = kDefaultWidth;
    if (height == kAbsent) {
        const float aspect = size.width / size.height;
        height = truncated(static_cast<float>(width) / aspect);
    }
    return {{"height", height}, {"width", width}};
}

PanelSize sizeOf(host::IGameNode& node, Report& report) {
    constexpr host::TimeValue kStart = 0;
    const host::Box3 box = node.GetIGameObject()->GetMaxObject()->GetDeformBBox(kStart);
    node.ReleaseIGameObject();
    const PanelSize size{box.pmax.x - box.pmin.x, box.pmax.y - box.pmin.y};
    if (!(size.width > 0 && size.height > 0)) {
        report.add(MessageId::panelFlat, toUtf8(node.GetName()),
                   "width " + std::to_string(size.width) + ", height " + std::to_string(size.height));
    }
    return size;
}

Quat panelOrientation(const host::GMatrix& objectToPackage) {
    Quat q = objectToPackage.Rotation();
    q.w = -q.w;
    q = q * kLookAlongMinusZ;
    q.Normalize();
    return q;
}

json panel(host::IGameNode& node, const NamePattern& numericSuffixPattern, Report& report) {
    const host::GMatrix objectToPackage = toPackageTransform(node.GetObjectTM(), true);
    const Point3 position = objectToPackage.Translation();
    const Quat orientation = panelOrientation(objectToPackage);
    const PanelSize size = sizeOf(node, report);
    return {{"autoResolution", true},
            {"index", panelNumber(nodeNameUtf8(node).name, numericSuffixPattern)},
            {"lastLoadedURL", "velinor:///default"},
            {"orientation",
             {{"w", orientation.w}, {"x", orientation.x}, {"y", orientation.y}, {"z", orientation.z}}},
            {"position", {{"x", position.x}, {"y", position.y}, {"z", position.z}}},
            {"resolution", resolution(*node.GetMaxNode(), size)},
            {"size", {{"height", size.height}, {"width", size.width}}},
            {"url", ""}};
}

}  // namespace

std::string buildWebtablesJson(const NodeList& webtableNodes, const NamePattern& numericSuffixPattern,
                               Report& report) {
    json panels = json::array();
    for (host::IGameNode* node : webtableNodes)
        panels.push_back(panel(*node, numericSuffixPattern, report));
    return panels.empty() ? "[]" : panels.dump(4);
}

}  // namespace velinor
