// What fuzzing does for hours (run.sh), for a second and always alike: the seeds, and copies of them with a
// few bytes changed or the end cut off.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

TEST(RandomBytes, AreReadWithoutHarm) {
    std::mt19937 random(20261123);
    const auto any = [&random](size_t below) { return random() % std::max<size_t>(below, 1); };
    int seeds = 0;
    for (const auto &entry : std::filesystem::directory_iterator(QOR_SEEDS)) {
        ++seeds;
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<uint8_t> seed(std::istreambuf_iterator<char>(file), {});
        for (int round = 0; round < 3000; ++round) {
            std::vector<uint8_t> bytes = seed;
            for (size_t change = any(4); round > 0 && change > 0; --change)
                bytes[any(bytes.size())] = static_cast<uint8_t>(any(8) ? random() : 0xFF);
            if (any(4) == 0 && round > 0)
                bytes.resize(any(bytes.size()));
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        }
    }
    EXPECT_GT(seeds, 10);
}
