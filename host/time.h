// Points and spans of scene time.
#pragma once

#include <cstdint>
#include <limits>

namespace velinor::host {

// Scene time in ticks, 4800 a second.
using TimeValue = std::int32_t;

// Where a matrix or value is asked for: the static frame of the scene interface.
inline constexpr TimeValue TIME_NegInfinity = std::numeric_limits<TimeValue>::min();

// A span of time, both ends included.
class Interval {
  public:
    Interval(TimeValue start, TimeValue end) : start_(start), end_(end) {}
    TimeValue Start() const { return start_; }
    TimeValue End() const { return end_; }

  private:
    TimeValue start_;
    TimeValue end_;
};

}  // namespace velinor::host
