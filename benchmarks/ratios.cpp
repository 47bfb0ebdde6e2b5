#include "benchmarks/ratios.h"

#include <algorithm>
#include <cstdio>

namespace velinor {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
        const bool isClock = run.run_name.time_type == "real_time";
        const double seconds = isClock ? run.real_accumulated_time : run.cpu_accumulated_time;
        const double nanoseconds = seconds * 1e9 / static_cast<double>(run.iterations);
        const std::string arguments = run.run_name.args.empty() ? "" : "/" + run.run_name.args;
        const auto [place, isNew] = fastest_.try_emplace(run.run_name.function_name + arguments, nanoseconds);
        place->second = std::min(place->second, nanoseconds);
    }
}

double RatioReporter::fastest(const std::string& name) const {
    const auto found = fastest_.find(name);
    return found == fastest_.end() ? 0 : found->second;
}

void RatioReporter::printRatio(const char* what, const char* target, double numerator,
                               double denominator) const {
    if (numerator == 0 || denominator == 0) return;
    std::printf("%-72s %6.2f   %s\n", what, numerator / denominator, target);
}

void RatioReporter::printRatios() const {
    std::printf("\n%-72s %6s   %s\n", "ratio of the fastest runs", "value", "target");
    printRatio("collection and descriptors: cost a node, 100,000 nodes / 10,000 nodes", "<= 1.3",
               fastest("BM_CollectAndDescribe/100000") / 100000,
               fastest("BM_CollectAndDescribe/10000") / 10000);
    printRatio("collection and descriptors: cost a node, 1,000,000 nodes / 10,000 nodes", "<= 1.3",
               fastest("BM_CollectAndDescribe/1000000") / 1000000,
               fastest("BM_CollectAndDescribe/10000") / 10000);
    for (const char* size : {"10000", "100000", "1000000"}) {
        const std::string what =
            std::string("collection and descriptors / formatting the same numbers, ") + size;
        printRatio(what.c_str(), "<= 3", fastest(std::string("BM_CollectAndDescribe/") + size),
                   fastest(std::string("BM_FormatNumbersOnly/") + size));
    }
    printRatio("CBOR snapshot of 1,000,000 triangles / reading the file's bytes", "",
               fastest("BM_ReadCborSnapshot/1000000"), fastest("BM_ReadFileBytes/1000000"));
    printRatio("ASE file of 405,000 triangles / counting the lines of the same bytes", "",
               fastest("BM_ReadAse"), fastest("BM_FindLines"));
    printRatio("importing a small scene file in a process of its own / in this process", "",
               fastest("BM_ImportIsolated"), fastest("BM_ImportHere"));
    printMeshRatios();
}

// Of a mesh of 1,000,000 vertices and 2,000,000 triangles.
void RatioReporter::printMeshRatios() const {
    const double curved = fastest("BM_WeldCurved");
    const double text = fastest("BM_WriteOgreMeshText");
    const double whole = fastest("BM_WriteOgreMesh");
    const double converter = fastest("BM_ConverterWrites");
    const double copy = fastest("BM_CopyFile");
    printRatio("welding / meshopt_generateVertexRemap", "<= 1.5", curved, fastest("BM_RemapBytes"));
    printRatio("welding a flat grid / a curved one", "<= 2.5", fastest("BM_WeldFlat"), curved);
    printRatio("the same without texture coordinates", "<= 2.5", fastest("BM_WeldFlatWithoutTexCoords"),
               fastest("BM_WeldCurvedWithoutTexCoords"));
    printRatio("the converter writing the format / our text", ">= 10", converter, text);
    printRatio("our text / cp of the same bytes", "<= 3", text, copy);
    printRatio("the converter writing the format / the whole writer, welding included", "", converter, whole);
    printRatio("the whole writer / cp of the same bytes", "", whole, copy);
}

}  // namespace velinor
