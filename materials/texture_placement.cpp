#include "materials/texture_placement.h"

#include <algorithm>

#include "base/text.h"
#include "platform/path_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// Whether the file `target`, which exists, holds what `source` holds.
bool holdsAlready(const MaterialWriterContext& context, const fs::path& source, const fs::path& target,
                  const std::optional<fs::path>& previous) {
    const bool isCopy = previous && !previous->empty();
    if (isCopy) {
        const auto known = context.placed.comparisonOf(*previous, source);
        if (known) return *known;
    }
    const bool areEqual = haveSameContent(source, target, context.progress);
    if (isCopy) context.placed.noteComparison(*previous, source, areEqual);
    return areEqual;
}

}  // namespace

FileCopy placeTexture(const MaterialWriterContext& context, const fs::path& source,
                      const fs::path& targetName) {
    const fs::path target = context.folders.resourcesFolder / targetName;
    FileCopy alreadyThere{FileCopy::Outcome::alreadyThere, {}, 0};
    const auto previous = context.placed.sourceOf(target);
    if (previous == source && !source.empty()) return alreadyThere;
    FileCopy check = checkSource(source);
    if (!check.isPlaced()) return check;

    bool isReplacing = false;
    std::error_code error;
    if (targetExists(target) && !fs::equivalent(source, target, error)) {
        if (previous && holdsAlready(context, source, target, previous)) return alreadyThere;
        isReplacing = previous || !haveSameContent(source, target, context.progress);
    }
    FileCopy copy = copyWholeFile(source, target, context.progress);
    if (copy.outcome != FileCopy::Outcome::done) return copy;
    if (isReplacing) reportEqualNames(context, targetName, source, previous);
    context.placed.noteCopied(target, source);
    context.report.addWritten(target, copy.bytes);
    return copy;
}

void reportOnce(const MaterialWriterContext& context, MessageId id, std::string_view subject,
                std::string_view detail) {
    if (context.placed.isNews(id, subject, detail)) context.report.add(id, subject, detail);
}

void reportEqualNames(const MaterialWriterContext& context, const fs::path& targetName,
                      const fs::path& source, const std::optional<fs::path>& other) {
    const std::string one = shownPath(source);
    std::string two = "an earlier file of the package";
    if (other) two = other->empty() ? "a generated colour" : shownPath(*other);
    const auto& [first, second] = std::minmax(one, two);
    reportOnce(context, MessageId::textureNamesEqual, shownPath(targetName), first + " and " + second);
}

std::string shownPath(const fs::path& path) {
    return toUtf8(toUtf16Lossy(utf8Path(path)));
}

std::string shownBytes(std::string_view bytes) {
    return shownPath(pathOfNarrow(bytes));
}

}  // namespace velinor
