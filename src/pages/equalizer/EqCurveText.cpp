#include "pages/equalizer/EqCurveText.h"

#include "pages/equalizer/EqFilter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <vector>

namespace EqCurveText {

namespace {

constexpr std::array<double, sizeof(ExtBlock::gain)> kBands{30,   60,   120,  250,  500,
                                                            1000, 2000, 4000, 8000, 16000}; // Hz
constexpr int kMaxGain = 20;
constexpr std::string_view kBlanks = " \t\r\v\f";

// What a file may ask for; anything beyond is a slip or not a curve.
struct Range {
    double least, most;
};
constexpr Range kPointFrequency{1, 200000};
constexpr Range kFilterFrequency{1, EqFilter::kSampleRate / 2 - 1};
constexpr Range kGain{-200, 200};
constexpr Range kQ{0.01, 100};

struct BadText {};

using Response = std::array<double, kBands.size()>; // dB at the bands

// Reads a line word by word.
class Words {
public:
    explicit Words(std::string_view line) : rest_(line) {}

    // Empty at the end of the line.
    std::string_view next() {
        const size_t start = std::min(rest_.find_first_not_of(kBlanks), rest_.size());
        rest_.remove_prefix(start);
        const std::string_view word = rest_.substr(0, rest_.find_first_of(kBlanks));
        rest_.remove_prefix(word.size());
        return word;
    }

private:
    std::string_view rest_;
};

// With a point, whatever the user's locale; "+" as other programs write it.
double number(std::string_view word, Range range) {
    if (word.size() > 1 && word[0] == '+' && word[1] != '-')
        word.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() ||
        !(value >= range.least && value <= range.most))
        throw BadText();
    return value;
}

// Cuts off and returns what stands before the mark, everything when there is none.
std::string_view takeUntil(std::string_view &text, char mark) {
    const std::string_view part = text.substr(0, text.find(mark));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    return part;
}

// "FREQUENCY GAIN; FREQUENCY GAIN; ..."
Response graphicResponse(std::string_view list) {
    std::map<double, double> points; // dB by the frequency's logarithm
    while (!list.empty()) {
        Words words(takeUntil(list, ';'));
        const std::string_view frequency = words.next();
        if (frequency.empty())
            continue;
        const double x = std::log(number(frequency, kPointFrequency));
        points[x] = number(words.next(), kGain);
        if (!words.next().empty())
            throw BadText();
    }
    if (points.empty())
        throw BadText();
    Response response;
    std::transform(kBands.begin(), kBands.end(), response.begin(), [&points](double band) {
        const double x = std::log(band);
        const auto above = points.lower_bound(x);
        if (above == points.end())
            return points.rbegin()->second;
        if (above == points.begin())
            return above->second;
        const auto below = std::prev(above);
        const double share = (x - below->first) / (above->first - below->first);
        return below->second + share * (above->second - below->second);
    });
    return response;
}

std::optional<EqFilter::Kind> filterKind(std::string_view word) {
    if (word == "PK" || word == "PEQ")
        return EqFilter::Kind::Peak;
    if (word == "LSC" || word == "LS" || word == "LSQ")
        return EqFilter::Kind::LowShelf;
    if (word == "HSC" || word == "HS" || word == "HSQ")
        return EqFilter::Kind::HighShelf;
    return std::nullopt;
}

// "ON PK Fc 105 Hz Gain -2.1 dB Q 0.70", "OFF ..." or, for an unused one, "ON None": none for the latter two.
std::optional<EqFilter::Filter> readFilter(std::string_view text) {
    Words words(text);
    const std::string_view state = words.next();
    const std::string_view kindWord = words.next();
    if (state == "OFF" || (state == "ON" && kindWord == "None"))
        return std::nullopt;
    const std::optional<EqFilter::Kind> kind = filterKind(kindWord);
    if (state != "ON" || !kind)
        throw BadText();
    const auto expect = [&words](std::string_view word) {
        if (words.next() != word)
            throw BadText();
    };
    EqFilter::Filter filter{*kind, 0, 0, EqFilter::kShelfQ};
    expect("Fc");
    filter.frequency = number(words.next(), kFilterFrequency);
    expect("Hz");
    expect("Gain");
    filter.gain = number(words.next(), kGain);
    expect("dB");
    const std::string_view last = words.next();
    if (last == "Q")
        filter.q = number(words.next(), kQ);
    else if (!last.empty() || *kind == EqFilter::Kind::Peak)
        throw BadText();
    expect("");
    return filter;
}

Response filterResponse(const EqFilter::Filter &filter) {
    Response response;
    std::transform(kBands.begin(), kBands.end(), response.begin(),
                   [&filter](double band) { return EqFilter::response(filter, band); });
    return response;
}

// What the line adds to the curve; none for a line of another kind.
std::optional<Response> readLine(std::string_view line) {
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const std::string_view value = line.substr(colon + 1);
    const std::string_view name = Words(line.substr(0, colon)).next(); // without a filter's number
    if (name == "GraphicEQ")
        return graphicResponse(value);
    if (name == "Filter") {
        const std::optional<EqFilter::Filter> filter = readFilter(value);
        return filter ? std::optional(filterResponse(*filter)) : std::nullopt;
    }
    if (name == "Channel" && Words(value).next() != "all")
        throw BadText();
    return std::nullopt;
}

Gains rounded(const Response &response) {
    Gains gains;
    std::transform(response.begin(), response.end(), gains.begin(), [](double gain) {
        return static_cast<int8_t>(std::lround(std::clamp<double>(gain, -kMaxGain, kMaxGain)));
    });
    return gains;
}

} // namespace

Parsed parse(std::string_view text) {
    // A text in UTF-16 has zero bytes, too.
    if (text.find('\0') != std::string_view::npos)
        return {};
    if (text.substr(0, 3) == "\xEF\xBB\xBF") // byte order mark
        text.remove_prefix(3);
    Response sum{};
    bool found = false;
    for (int line = 1; !text.empty(); ++line) {
        try {
            if (const std::optional<Response> part = readLine(takeUntil(text, '\n'))) {
                std::transform(sum.begin(), sum.end(), part->begin(), sum.begin(), std::plus<>());
                found = true;
            }
        } catch (const BadText &) {
            return {std::nullopt, line};
        }
    }
    return found ? Parsed{rounded(sum), 0} : Parsed{};
}

std::string graphicEq(const ExtBlock &block) {
    std::string line = "GraphicEQ:";
    for (size_t band = 0; band < kBands.size(); ++band)
        line += (band ? "; " : " ") + std::to_string(static_cast<int>(kBands[band])) + ' ' +
                std::to_string(block.gain[band]);
    return line + '\n';
}

} // namespace EqCurveText
