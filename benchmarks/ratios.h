// The ratios that the benchmarks are about, printed below their table.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace velinor {

// Shows the usual table and keeps the fastest run of each benchmark.
class RatioReporter final : public benchmark::ConsoleReporter {
  public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override;

    // Prints every ratio whose benchmarks have run.
    void printRatios() const;

  private:
    // The shortest time of a benchmark in nanoseconds, of the processor or, for one that is measured so, of
    // the clock; 0 where it has not run.
    double fastest(const std::string& name) const;
    void printMeshRatios() const;
    void printRatio(const char* what, const char* target, double numerator, double denominator) const;

    std::map<std::string, double> fastest_;
};

}  // namespace velinor
