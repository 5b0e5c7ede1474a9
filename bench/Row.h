// One line of the table that bench/run prints: tab-separated, so that the script can align the columns.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

inline void printRow(const std::string &what, double value, const std::string &unit, double atMost,
                     const std::string &detail) {
    std::printf("%s\t%.2f%s\tat most %g%s\t%s\t%s\n", what.c_str(), value, unit.c_str(), atMost, unit.c_str(),
                value <= atMost ? "met" : "MISSED", detail.c_str());
    std::fflush(stdout);
}

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// The text without superfluous digits: "412.3 ms".
inline std::string figure(double value, const char *unit) {
    char text[64];
    std::snprintf(text, sizeof text, "%.1f %s", value, unit);
    return text;
}
