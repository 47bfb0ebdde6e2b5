#include "benchmarks/ratios.h"
#include "platform/isolated_run.h"
#include "platform/program_start.h"

int main(int argc, char** argv) {
    velinor::runIsolatedWorkIfAsked(velinor::programArguments(argc, argv));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    velinor::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}
