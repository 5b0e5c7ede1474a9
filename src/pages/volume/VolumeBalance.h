// How the speaker channels, the master volume and the Windows volume follow each other, on plain values.
// Levels are percentages 0..100; a device may report others (-128..127), which every function here takes
// without harm.
#pragma once

#include <cstdint>

namespace VolumeBalance {

struct Levels {
    int8_t master;
    int8_t left;
    int8_t right;
};

// The master moved from previousMaster to levels.master. The louder channel becomes the master and the
// quieter one moves by the same amount within 0..100, so that the balance is kept until a limit is hit.
Levels followMaster(Levels levels, int8_t previousMaster);

// A channel of Levels.
using Channel = int8_t Levels::*;

// One channel moved. Locked, the other channel and the master take its value; else the master is the louder
// one.
Levels followChannel(Levels levels, Channel moved, bool locked);

// Whether a volume that Windows reports is news. Below 60 % a difference of one is only the rounding between
// the endpoint's scalar and percent; from 60 % on every report is taken, however small the change.
bool isNews(int systemVolume, int master);

// Percent, cut towards zero, of an endpoint volume 0.0..1.0. Levels outside give the nearer limit, NaN gives
// 0.
int percentOfScalar(float scalar);

} // namespace VolumeBalance
