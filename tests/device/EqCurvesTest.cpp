// The curve store against exact bytes of its file image.
#include "device/EqCurves.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

namespace {

using Image = std::array<uint8_t, sizeof(EqCurveStore)>;

Image imageOf(const EqCurveStore &store) {
    Image image;
    std::memcpy(image.data(), &store, image.size());
    return image;
}

ExtBlock gainsFrom(int first) {
    ExtBlock block{};
    for (int band = 0; band < 10; ++band)
        block.gain[band] = static_cast<int8_t>(first + band);
    return block;
}

void putGains(Image &image, size_t record, int first) {
    for (int band = 0; band < 10; ++band)
        image[8 + 74 * record + 64 + static_cast<size_t>(band)] = static_cast<uint8_t>(first + band);
}

// Saves and keeps what went to the disk, which differs from the store for a new curve.
struct Disk {
    std::vector<Image> writes;
    EqCurves::SaveResult save(EqCurveStore &store, std::u16string_view name, int firstGain) {
        return EqCurves::save(store, name, gainsFrom(firstGain),
                              [this](const EqCurveStore &s) { writes.push_back(imageOf(s)); });
    }
};

// n curves named "0", "1", ..., with gains i, i + 1, ...
EqCurveStore filled(int n) {
    EqCurveStore store{};
    Disk disk;
    for (int i = 0; i < n; ++i)
        disk.save(store, std::u16string(1, static_cast<char16_t>(u'0' + i)), i);
    return store;
}

} // namespace

TEST(EqCurves, NewCurveIsWrittenBeforeItIsCountedAndAKnownOneReplaced) {
    EqCurveStore store{};
    Disk disk;
    ASSERT_EQ(disk.save(store, u"A业", -20), EqCurves::SaveResult::Added);
    Image expected{};
    expected[8] = 'A';
    expected[10] = 0x1A; // 业 is U+4E1A
    expected[11] = 0x4E;
    putGains(expected, 0, -20);
    ASSERT_EQ(disk.writes.size(), 1U);
    EXPECT_EQ(disk.writes[0], expected);
    expected[0] = 1; // in memory it counts
    EXPECT_EQ(imageOf(store), expected);

    ASSERT_EQ(disk.save(store, u"B", 1), EqCurves::SaveResult::Added);
    expected[4] = 1; // the second is current, the count on disk still 1
    expected[8 + 74] = 'B';
    putGains(expected, 1, 1);
    EXPECT_EQ(disk.writes[1], expected);
    EXPECT_EQ(store.count, 2);

    ASSERT_EQ(disk.save(store, u"A业", 5), EqCurves::SaveResult::Replaced);
    expected[0] = 2;
    expected[4] = 0;
    putGains(expected, 0, 5);
    EXPECT_EQ(imageOf(store), expected);
    ASSERT_EQ(disk.writes.size(), 3U);
    EXPECT_EQ(disk.writes[2], expected);
}

TEST(EqCurves, EleventhNameIsRefusedAndTenthStillReplaceable) {
    EqCurveStore store = filled(10);
    const Image before = imageOf(store);
    Disk disk;
    EXPECT_EQ(disk.save(store, u"eleven", 0), EqCurves::SaveResult::Full);
    EXPECT_EQ(imageOf(store), before);
    EXPECT_TRUE(disk.writes.empty());
    EXPECT_EQ(disk.save(store, u"9", 0), EqCurves::SaveResult::Replaced);
    EXPECT_EQ(store.count, 10);
}

TEST(EqCurves, NamesOfUpTo31UnitsFitAndLongerOnesAreCut) {
    EqCurveStore store{};
    Disk disk;
    const std::u16string full(31, u'业');
    disk.save(store, full, 0);
    EXPECT_EQ(EqCurves::nameOf(store.curve[0]), full);
    EXPECT_EQ(imageOf(store)[8 + 62], 0);
    EXPECT_EQ(disk.save(store, full + u"more", 3), EqCurves::SaveResult::Replaced);
    EXPECT_EQ(store.curve[0].gain[0], 3);

    // Names must be equal as a whole, not by their beginning or case.
    EXPECT_EQ(EqCurves::find(store, full.substr(0, 30)), std::nullopt);
    disk.save(store, u"ab", 0);
    EXPECT_EQ(EqCurves::find(store, u"AB"), std::nullopt);
    EXPECT_EQ(EqCurves::find(store, u"ab"), 1);
}

TEST(EqCurves, RemovingClosesTheGapAndKeepsCurrentInside) {
    const struct {
        int count, current;
        const char16_t *name;
        bool removed;
        int newCount, newCurrent;
        const char *left; // first letters of the records in order
    } rows[] = {
        {3, 2, u"0", true, 2, 1, "12"},   {3, 0, u"2", true, 2, 0, "01"},
        {1, 0, u"0", true, 0, 0, ""},     {10, 9, u"0", true, 9, 8, "123456789"},
        {3, 1, u"x", false, 3, 1, "012"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << row.count << " curves, current " << row.current);
        EqCurveStore store = filled(row.count);
        store.current = row.current;
        EXPECT_EQ(EqCurves::remove(store, row.name), row.removed);
        Image expected{};
        expected[0] = static_cast<uint8_t>(row.newCount);
        expected[4] = static_cast<uint8_t>(row.newCurrent);
        for (size_t i = 0; i < std::strlen(row.left); ++i) {
            expected[8 + 74 * i] = static_cast<uint8_t>(row.left[i]);
            putGains(expected, i, row.left[i] - '0');
        }
        EXPECT_EQ(imageOf(store), expected);
    }
}

TEST(EqCurves, RecallTakesTheGainsAndOnlyCountedRecords) {
    EqCurveStore store = filled(3);
    ExtBlock gains = gainsFrom(-9);
    gains.reserved[0] = 0x77;
    EXPECT_TRUE(EqCurves::recall(store, u"1", gains));
    EXPECT_EQ(store.current, 1);
    EXPECT_EQ(gains.gain[9], 10);
    EXPECT_EQ(gains.reserved[0], 0x77);

    store.count = 2;
    EXPECT_FALSE(EqCurves::recall(store, u"2", gains));
    EXPECT_EQ(store.current, 1);
}

// Whatever a file holds, every operation stays inside the record (the sanitizers watch).
TEST(EqCurves, WildImagesAreClamped) {
    for (const int32_t wild : {-1, 11, 1000000000, INT32_MIN, INT32_MAX}) {
        EqCurveStore store;
        std::memset(&store, 0xFF, sizeof store); // names without a terminator
        store.count = wild;
        store.current = wild;
        EqCurves::sanitise(store);
        EXPECT_EQ(store.count, wild < 0 ? 0 : 10);
        EXPECT_EQ(store.current, wild < 0 ? 0 : 9);
        EXPECT_EQ(EqCurves::nameOf(store.curve[9]).size(), 32U);
        Disk disk;
        disk.save(store, u"new", 0);
        EqCurves::remove(store, std::u16string(40, u'\xFFFF'));
        EXPECT_EQ(store.count, wild < 0 ? 1 : 10);
    }
}
