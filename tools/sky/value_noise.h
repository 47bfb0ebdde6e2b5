// Smooth noise on the plane, for clouds.
#pragma once

namespace velinor {

// Five octaves of value noise at (x, y): 0 to 1, about 0.5 in the mean, details of a size of 1 and smaller.
// For |x| and |y| below 100,000,000. The same everywhere: it depends on integer arithmetic, +, - and * alone.
double fractalNoise(double x, double y);

}  // namespace velinor
