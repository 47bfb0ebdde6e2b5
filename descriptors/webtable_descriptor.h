// The web-panel descriptor webtables.json: the browser panels that hang in the scene.
// docs/package-format.md shows the file.
#pragma once

#include <string>

#include "base/report.h"
#include "scene/collected_scene.h"
#include "scene/name_patterns.h"

namespace velinor {

// The text of webtables.json for the panels of `webtableNodes`, in that order, without the line feed that
// ends the file. A panel without extent is told in the report.
std::string buildWebtablesJson(const NodeList& webtableNodes, const NamePattern& numericSuffixPattern,
                               Report& report);

}  // namespace velinor
