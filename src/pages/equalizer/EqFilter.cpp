#include "pages/equalizer/EqFilter.h"

#include <cmath>
#include <complex>

namespace EqFilter {

namespace {

constexpr double kTurn = 6.283185307179586;

// H(z) = (b0 + b1/z + b2/z²) / (a0 + a1/z + a2/z²)
struct Biquad {
    double b0, b1, b2, a0, a1, a2;
};

// The cookbook's shelf formulas differ in the sign of the cosine terms and of b1 and a1 alone.
Biquad shelf(double a, double cosine, double alpha, double sign) {
    const double c = sign * cosine, root = 2 * std::sqrt(a) * alpha;
    return {a * (a + 1 - (a - 1) * c + root),  sign * 2 * a * (a - 1 - (a + 1) * c),
            a * (a + 1 - (a - 1) * c - root),  a + 1 + (a - 1) * c + root,
            sign * -2 * (a - 1 + (a + 1) * c), a + 1 + (a - 1) * c - root};
}

Biquad coefficients(const Filter &filter) {
    const double w = kTurn * filter.frequency / kSampleRate;
    const double a = std::pow(10, filter.gain / 40);
    const double cosine = std::cos(w), alpha = std::sin(w) / (2 * filter.q);
    if (filter.kind == Kind::Peak)
        return {1 + alpha * a, -2 * cosine, 1 - alpha * a, 1 + alpha / a, -2 * cosine, 1 - alpha / a};
    return shelf(a, cosine, alpha, filter.kind == Kind::LowShelf ? 1 : -1);
}

} // namespace

double response(const Filter &filter, double frequency) {
    const Biquad f = coefficients(filter);
    const std::complex<double> step = std::polar(1.0, -kTurn * frequency / kSampleRate); // 1/z
    return 20 *
           std::log10(std::abs((f.b0 + step * (f.b1 + step * f.b2)) / (f.a0 + step * (f.a1 + step * f.a2))));
}

} // namespace EqFilter
