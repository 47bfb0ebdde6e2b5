// The two forms in which a check is printed.
#pragma once

#include <string>

#include "tools/ogre/check_report.h"

namespace velinor {

// A line "FILE: what" for each finding, without control characters.
std::string linesOf(const std::vector<Finding>& findings);

// The whole report as JSON:
//
//     {"faults": [{"file": "…", "text": "…"}], "notes": […],
//      "meshes": {"Chair.mesh": {"vertices": 24, "bounds": {"min": [x, y, z], "max": [x, y, z]},
//                                "submeshes": [{"material": "Wood", "triangles": 12}]}}}
std::string jsonOf(const CheckReport& report);

}  // namespace velinor
