#include "benchmarks/ratios.h"

#include <algorithm>
#include <cstdio>

namespace velinor {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
        const double nanoseconds = run.cpu_accumulated_time * 1e9 / static_cast<double>(run.iterations);
        const auto [place, isNew] =
            fastest_.try_emplace(run.run_name.function_name + "/" + run.run_name.args, nanoseconds);
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
    std::printf("\n%-72s %6s   %s\n", "ratio of processor times, fastest runs", "value", "target");
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
}

}  // namespace velinor
