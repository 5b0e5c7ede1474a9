// Tells the reports of the endpoint volume that are only the panel's own volumes coming back from those of a
// change made elsewhere. Reports are queued from a thread of the audio system, so they come later than the
// call that caused them, several at a time, or not at all where nothing changed. On plain values.
#pragma once

#include <chrono>
#include <deque>
#include <optional>

class VolumeEchoes {
public:
    using Time = std::chrono::steady_clock::time_point;
    enum class Echo { Ignored, Followed };

    // The panel is about to set the endpoint to this volume (percent). The report of a followed one counts as
    // news, unless another volume has been set since.
    void sent(int percent, Echo echo, Time now);

    // Whether a reported volume (percent) is to be ignored. To be asked once for every report, in their
    // order.
    bool isEcho(int reported, Time now);

private:
    struct Sent {
        int percent;
        Echo echo;
        Time time;
    };

    void forgetOld(Time now);

    std::deque<Sent> underWay_;        // sent and not yet reported, the oldest first
    std::optional<int> endpointHolds_; // by the panel's doing, as far as it knows
};
