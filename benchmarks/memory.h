// Memory of this process, as the system counts it.
#pragma once

#include <cstdint>

namespace velinor {

// Gives free memory back to the system and begins a new measurement of the peak. False where the system does
// not offer it.
bool resetPeakMemory();

// Resident memory now, and at its peak since resetPeakMemory, in bytes. 0 where the system does not tell.
std::uint64_t residentMemory();
std::uint64_t peakMemory();

}  // namespace velinor
