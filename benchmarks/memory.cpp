#include "benchmarks/memory.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <fstream>
#include <string>

namespace velinor {
namespace {

std::uint64_t statusValue(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word != key) continue;
        std::uint64_t kilobytes = 0;
        status >> kilobytes;
        return kilobytes * 1024;
    }
    return 0;
}

}  // namespace

bool resetPeakMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    constexpr char kResetPeak = '5';
    std::ofstream file("/proc/self/clear_refs");
    file << kResetPeak;
    file.close();
    return file.good();
}

std::uint64_t residentMemory() {
    return statusValue("VmRSS:");
}
std::uint64_t peakMemory() {
    return statusValue("VmHWM:");
}

}  // namespace velinor
