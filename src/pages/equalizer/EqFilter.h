// Magnitude responses of the filters that equalizer files describe: the biquads of Robert Bristow-Johnson's
// "Audio EQ Cookbook" (https://www.w3.org/TR/audio-eq-cookbook/).
#pragma once

namespace EqFilter {

constexpr double kSampleRate = 48000; // Hz

enum class Kind { Peak, LowShelf, HighShelf };

struct Filter {
    Kind kind;
    double frequency; // Hz, centre of a peak, middle of a shelf's slope; below half the sample rate
    double gain;      // dB
    double q;         // above 0
};

constexpr double kShelfQ = 0.70710678118654752; // of the steepest shelf without a hump (slope S = 1)

// dB at `frequency` (Hz), which is below half the sample rate.
double response(const Filter &filter, double frequency);

} // namespace EqFilter
