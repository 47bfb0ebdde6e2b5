#include "tools/sky/dxt1.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace velinor {
namespace {

constexpr std::array<int, 3> kBits{5, 6, 5};                     // of red, green, blue in an end colour
constexpr std::array<double, 4> kPart0{1, 0, 2.0 / 3, 1.0 / 3};  // how much of colour0 each choice has

using EndColour = std::array<int, 3>;  // parts in steps, 0 to 31 or 63
using Choices = std::array<int, 16>;

int topStep(int channel) {
    return (1 << kBits[channel]) - 1;
}

// The part 0 to 255 that a step stands for: its bits, repeated to fill eight.
double partOf(int channel, int step) {
    const int bits = kBits[channel];
    return static_cast<double>(step << (8 - bits) | step >> (2 * bits - 8));
}

std::uint16_t packed(const EndColour& colour) {
    return static_cast<std::uint16_t>(colour[0] << 11 | colour[1] << 5 | colour[2]);
}

EndColour unpacked(int bits) {
    return {bits >> 11 & 31, bits >> 5 & 63, bits & 31};
}

using Palette = std::array<Rgb, 4>;

Palette paletteOf(const EndColour& colour0, const EndColour& colour1) {
    Palette palette;
    for (int choice = 0; choice < 4; ++choice) {
        for (int channel = 0; channel < 3; ++channel) {
            palette[choice][channel] = kPart0[choice] * partOf(channel, colour0[channel]) +
                                       (1 - kPart0[choice]) * partOf(channel, colour1[channel]);
        }
    }
    return palette;
}

double squaredDistance(const Rgb& a, const Rgb& b) {
    const Rgb d = a + -1.0 * b;
    return d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
}

// A block as two end colours and choices, and its squared error.
struct Fit {
    EndColour colour0{};
    EndColour colour1{};
    Choices choices{};
    double error = 0;
};

// The nearest choice for every texel.
void choose(const TexelBlock& texels, Fit& fit) {
    const Palette palette = paletteOf(fit.colour0, fit.colour1);
    fit.error = 0;
    for (std::size_t i = 0; i < texels.size(); ++i) {
        double nearest = squaredDistance(texels[i], palette[0]);
        fit.choices[i] = 0;
        for (int choice = 1; choice < 4; ++choice) {
            const double distance = squaredDistance(texels[i], palette[choice]);
            if (distance >= nearest) continue;
            nearest = distance;
            fit.choices[i] = choice;
        }
        fit.error += nearest;
    }
}

// Moves both end colours of one channel, by at most two steps each, to where the error is least with the
// choices as they are. With a and b the shares of both ends in a texel x, the error of ends p and q is sum (a
// p + b q - x)^2; its sums are taken once.
void moveEnds(const TexelBlock& texels, int channel, Fit& fit) {
    double aa = 0, ab = 0, bb = 0, ax = 0, bx = 0;
    for (std::size_t i = 0; i < texels.size(); ++i) {
        const double a = kPart0[fit.choices[i]];
        const double b = 1 - a;
        aa += a * a;
        ab += a * b;
        bb += b * b;
        ax += a * texels[i][channel];
        bx += b * texels[i][channel];
    }
    const auto error = [&](int step0, int step1) {
        const double p = partOf(channel, step0);
        const double q = partOf(channel, step1);
        return aa * p * p + 2 * ab * p * q + bb * q * q - 2 * (ax * p + bx * q);
    };
    const int from0 = fit.colour0[channel];
    const int from1 = fit.colour1[channel];
    double best = error(from0, from1);
    for (int step0 = std::max(from0 - 2, 0); step0 <= std::min(from0 + 2, topStep(channel)); ++step0) {
        for (int step1 = std::max(from1 - 2, 0); step1 <= std::min(from1 + 2, topStep(channel)); ++step1) {
            const double found = error(step0, step1);
            if (found >= best) continue;
            best = found;
            fit.colour0[channel] = step0;
            fit.colour1[channel] = step1;
        }
    }
}

// The best fit that is found from `start`, by moving the end colours and choosing anew in turns.
Fit improved(const TexelBlock& texels, Fit start) {
    for (int round = 0; round < 12; ++round) {
        Fit next = start;
        for (int channel = 0; channel < 3; ++channel)
            moveEnds(texels, channel, next);
        choose(texels, next);
        if (next.error >= start.error) break;
        start = next;
    }
    return start;
}

// The two texels that lie farthest apart in the channel that varies most.
std::pair<Rgb, Rgb> extremes(const TexelBlock& texels) {
    std::pair<Rgb, Rgb> ends{texels[0], texels[0]};
    double widest = -1;
    for (int channel = 0; channel < 3; ++channel) {
        const auto less = [channel](const Rgb& a, const Rgb& b) { return a[channel] < b[channel]; };
        const auto [low, high] = std::minmax_element(texels.begin(), texels.end(), less);
        if ((*high)[channel] - (*low)[channel] <= widest) continue;
        widest = (*high)[channel] - (*low)[channel];
        ends = {*high, *low};
    }
    return ends;
}

// The steps nearest to `colour`, moved by `outward` steps in the direction away from `other`.
EndColour endColour(const Rgb& colour, const Rgb& other, int outward) {
    EndColour end{};
    for (int channel = 0; channel < 3; ++channel) {
        const double step = colour[channel] / 255 * topStep(channel);
        const int sign = colour[channel] >= other[channel] ? 1 : -1;
        end[channel] =
            std::clamp(static_cast<int>(std::floor(step + 0.5)) + sign * outward, 0, topStep(channel));
    }
    return end;
}

// Puts the larger colour first, and parts two equal ones, where any choice had been as good.
void order(Fit& fit) {
    if (packed(fit.colour0) == packed(fit.colour1)) {
        fit.choices.fill(fit.colour0[2] > 0 ? 0 : 1);
        if (fit.colour0[2] > 0) {
            --fit.colour1[2];
        } else {
            ++fit.colour0[2];
        }
    } else if (packed(fit.colour0) < packed(fit.colour1)) {
        std::swap(fit.colour0, fit.colour1);
        for (int& choice : fit.choices)
            choice ^= 1;  // 0 and 1 change places, 2 and 3 too
    }
}

// Where the search begins: with the extremes of the block as ends, also moved apart; and with all texels a
// third between two equal ends, which then part. The latter is best for blocks of almost one colour: it has
// finer steps.
std::vector<Fit> startsFor(const TexelBlock& texels) {
    const auto [high, low] = extremes(texels);
    std::vector<Fit> starts;
    for (const int outward : {0, 1, 2}) {
        Fit fit{endColour(high, low, outward), endColour(low, high, outward), {}, 0};
        choose(texels, fit);
        starts.push_back(fit);
    }
    const EndColour middle = endColour(mix(high, low, 0.5), low, 0);
    Fit between{middle, middle, {}, std::numeric_limits<double>::max()};
    between.choices.fill(2);
    starts.push_back(between);
    return starts;
}

}  // namespace

Dxt1Block encodeDxt1(const TexelBlock& texels) {
    Fit best;
    best.error = std::numeric_limits<double>::max();
    for (const Fit& start : startsFor(texels)) {
        const Fit fit = improved(texels, start);
        if (fit.error < best.error) best = fit;
    }
    order(best);

    const std::uint16_t colour0 = packed(best.colour0);
    const std::uint16_t colour1 = packed(best.colour1);
    Dxt1Block block{static_cast<std::uint8_t>(colour0), static_cast<std::uint8_t>(colour0 >> 8),
                    static_cast<std::uint8_t>(colour1), static_cast<std::uint8_t>(colour1 >> 8)};
    for (std::size_t i = 0; i < best.choices.size(); ++i)
        block[4 + i / 4] |= static_cast<std::uint8_t>(best.choices[i] << 2 * (i % 4));
    return block;
}

TexelBlock decodeDxt1(const Dxt1Block& block) {
    const Palette palette = paletteOf(unpacked(block[0] | block[1] << 8), unpacked(block[2] | block[3] << 8));
    TexelBlock texels;
    for (std::size_t i = 0; i < texels.size(); ++i)
        texels[i] = palette[block[4 + i / 4] >> 2 * (i % 4) & 3];
    return texels;
}

}  // namespace velinor
