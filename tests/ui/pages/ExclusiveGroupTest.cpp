#include "ui/pages/ExclusiveGroup.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

// Bit i of a state is the switch of kAllEffects[i].
constexpr size_t kOffsets[] = {1, 15, 33, 34};

SoundBlock blockIn(unsigned state) {
    SoundBlock block;
    auto *bytes = reinterpret_cast<uint8_t *>(&block);
    for (size_t i = 0; i < sizeof block; ++i)
        bytes[i] = static_cast<uint8_t>(0xA0 + i % 7);
    for (unsigned i = 0; i < 4; ++i)
        bytes[kOffsets[i]] = (state >> i) & 1;
    return block;
}

} // namespace

// All sixteen states, also those that the panel itself never makes: on wins alone, off touches nobody else,
// and no other byte of the block changes.
TEST(ExclusiveGroup, AtMostOneAfterSwitchingOn) {
    for (unsigned state = 0; state < 16; ++state) {
        for (unsigned effect = 0; effect < 4; ++effect) {
            SCOPED_TRACE(testing::Message() << "state " << state << ", effect " << effect);
            SoundBlock block = blockIn(state);
            const unsigned own = 1U << effect;
            const bool turnsOn = (state & own) == 0;
            EXPECT_EQ(ExclusiveGroup::toggle(block, kAllEffects[effect]), turnsOn);
            const SoundBlock expected = blockIn(turnsOn ? own : state & ~own);
            EXPECT_EQ(std::memcmp(&block, &expected, sizeof block), 0);
        }
    }
}
