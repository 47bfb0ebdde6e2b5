// What a finished export has to say.
#pragma once

#include <cstddef>
#include <filesystem>

#include "base/report.h"
#include "hosts/import/import_notes.h"

namespace velinor {

// How many nodes the export found, by what became of them.
struct ExportCounts {
    std::size_t objects = 0;
    std::size_t meshes = 0;
    std::size_t lights = 0;
    std::size_t cameras = 0;
    std::size_t cameraBounds = 0;
    std::size_t webtables = 0;
};

struct ExportSummary {
    std::filesystem::path package;  // absolute
    ExportCounts counts;
    const Report& report;
    const ImportNotes& notes;
};

}  // namespace velinor
