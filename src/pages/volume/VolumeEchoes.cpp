#include "pages/volume/VolumeEchoes.h"

#include "pages/volume/VolumeBalance.h"

#include <algorithm>

namespace {

// A volume that has not been reported by then never will: the endpoint held it already, was muted, or is not
// the one that the device library sets.
constexpr std::chrono::seconds kLatestReport{3};

// The endpoint keeps a scalar, whose percent may be one less: 0.7F * 100 is cut to 69.
bool reports(int reported, int percent) {
    return reported == percent ||
           reported == VolumeBalance::percentOfScalar(static_cast<float>(percent) / 100.0F);
}

} // namespace

void VolumeEchoes::sent(int percent, Echo echo, Time now) {
    forgetOld(now);
    const bool unchanged = echo == Echo::Ignored && endpointHolds_ == percent;
    if (!unchanged)
        underWay_.push_back({percent, echo, now});
    endpointHolds_ = echo == Echo::Ignored ? std::optional(percent) : std::nullopt;
}

bool VolumeEchoes::isEcho(int reported, Time now) {
    forgetOld(now);
    const auto found = std::find_if(underWay_.begin(), underWay_.end(),
                                    [=](const Sent &sent) { return reports(reported, sent.percent); });
    if (found != underWay_.end()) {
        // A followed one that the panel has set anew since is outdated.
        const bool news = found->echo == Echo::Followed && found + 1 == underWay_.end();
        underWay_.erase(underWay_.begin(), found + 1); // the audio system has left out those before it
        return !news;
    }
    // Reported again without a change of the volume, with the mute state for instance.
    if (endpointHolds_ && reports(reported, *endpointHolds_))
        return true;
    endpointHolds_.reset();
    return false;
}

void VolumeEchoes::forgetOld(Time now) {
    while (!underWay_.empty() && now - underWay_.front().time > kLatestReport)
        underWay_.pop_front();
}
