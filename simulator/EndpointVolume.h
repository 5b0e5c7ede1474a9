// Volume of the default playback (0) and microphone (1) endpoint in percent, through Core Audio where there
// is an endpoint that answers, else kept as registry values "PlaybackVolume", "MicrophoneVolume" and
// "PlaybackMuted".
#pragma once

#include "simulator/CallGuard.h"

namespace EndpointVolume {

Outcome get(int32_t device);
Outcome set(int32_t percent, int32_t device); // limited to 0..100
Outcome setMuted(bool muted);                 // playback

} // namespace EndpointVolume
