#include "update/DownloadProgress.h"

#include <gtest/gtest.h>

namespace {

TEST(DownloadProgress, IsShownByStageAndValue) {
    const auto &failed = UpdateTexts::kDownloadFailed, &done = UpdateTexts::kDownloaded,
               &running = UpdateTexts::kDownloading;
    const struct {
        uint32_t stage;
        int32_t value;
        const BilingualText &text;
        std::optional<int32_t> bar;
    } rows[] = {{10, -1, failed, {}},   {2, -42, failed, {}},   {2, 0, running, 0}, {2, 100, done, 100},
                {2, 101, running, 101}, {10, 100, running, {}}, {0, 0, running, {}}};
    for (const auto &row : rows) {
        const ProgressDisplay display = progressDisplay(row.stage, row.value);
        EXPECT_STREQ(display.text.english, row.text.english) << row.stage << " " << row.value;
        EXPECT_EQ(display.bar, row.bar) << row.stage << " " << row.value;
    }
}

} // namespace
