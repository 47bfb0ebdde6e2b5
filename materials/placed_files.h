// What one export has put into the resources folder so far, so that nothing is copied twice and nothing is
// replaced without a word.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/messages.h"
#include "host/material.h"
#include "materials/alpha_test.h"

namespace velinor {

// The memory of one export. Looks at no disk. Targets and scripts whose names are one file to the system are
// one.
class PlacedFiles {
  public:
    // Where the content of `target` came from: a file's path, empty for a generated image, nothing where this
    // export has not written it.
    std::optional<std::filesystem::path> sourceOf(const std::filesystem::path& target) const;

    // Notes that `target` is now a copy of `source`, or a generated image.
    void noteCopied(const std::filesystem::path& target, const std::filesystem::path& source);
    void noteGenerated(const std::filesystem::path& target);

    // What a comparison of the two files' contents gave, in either order; nothing where there was none yet.
    std::optional<bool> comparisonOf(const std::filesystem::path& a, const std::filesystem::path& b) const;
    void noteComparison(const std::filesystem::path& a, const std::filesystem::path& b, bool areEqual);

    // What the pixels of the image at `path` say, as noted since it was last written.
    std::optional<AlphaAnswer> alphaOf(const std::string& path) const;
    void noteAlpha(const std::string& path, const AlphaAnswer& alpha);

    // Gives the script `scriptName` to `material`, which may be null. Answers the name of the other material
    // that had it until then; nothing where none had.
    std::optional<std::string> claimScript(std::string_view scriptName, const host::IGameMaterial* material,
                                           std::string_view materialName);

    // Whether this message has not been asked for before: many materials share one fact.
    bool isNews(MessageId id, std::string_view subject, std::string_view detail);

  private:
    struct Owner {
        const host::IGameMaterial* material;
        std::string name;
    };
    using Pair = std::pair<std::filesystem::path, std::filesystem::path>;

    std::map<std::filesystem::path::string_type, std::filesystem::path> sources_;  // by target's key
    std::map<Pair, bool> comparisons_;
    std::map<std::string, AlphaAnswer> alphas_;
    std::map<std::filesystem::path::string_type, Owner> scripts_;  // by key
    std::set<std::tuple<MessageId, std::string, std::string>> told_;
};

}  // namespace velinor
