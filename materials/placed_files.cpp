#include "materials/placed_files.h"

#include "base/text.h"
#include "platform/file_name_key.h"
#include "platform/path_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::pair<fs::path, fs::path> ordered(const fs::path& a, const fs::path& b) {
    return a < b ? std::pair(a, b) : std::pair(b, a);
}

}  // namespace

std::optional<fs::path> PlacedFiles::sourceOf(const fs::path& target) const {
    const auto found = sources_.find(fileNameKey(target));
    if (found == sources_.end()) return std::nullopt;
    return found->second;
}

void PlacedFiles::noteCopied(const fs::path& target, const fs::path& source) {
    sources_[fileNameKey(target)] = source;
    alphas_.erase(narrowPath(target));
}

void PlacedFiles::noteGenerated(const fs::path& target) {
    sources_[fileNameKey(target)].clear();
}

std::optional<bool> PlacedFiles::comparisonOf(const fs::path& a, const fs::path& b) const {
    const auto found = comparisons_.find(ordered(a, b));
    if (found == comparisons_.end()) return std::nullopt;
    return found->second;
}

void PlacedFiles::noteComparison(const fs::path& a, const fs::path& b, bool areEqual) {
    comparisons_[ordered(a, b)] = areEqual;
}

std::optional<AlphaAnswer> PlacedFiles::alphaOf(const std::string& path) const {
    const auto found = alphas_.find(path);
    if (found == alphas_.end()) return std::nullopt;
    return found->second;
}

void PlacedFiles::noteAlpha(const std::string& path, const AlphaAnswer& alpha) {
    alphas_[path] = alpha;
}

std::optional<std::string> PlacedFiles::claimScript(std::string_view scriptName,
                                                    const host::IGameMaterial* material,
                                                    std::string_view materialName) {
    const auto [found, isNew] =
        scripts_.try_emplace(fileNameKey(pathOfUtf8(scriptName)), Owner{material, std::string(materialName)});
    if (isNew || found->second.material == material) return std::nullopt;
    std::string previous = std::move(found->second.name);
    found->second = {material, std::string(materialName)};
    return previous;
}

bool PlacedFiles::isNews(MessageId id, std::string_view subject, std::string_view detail) {
    return told_.emplace(id, subject, detail).second;
}

}  // namespace velinor
