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

EqCurveStore storeOf(const Image &image) {
    EqCurveStore store;
    std::memcpy(&store, image.data(), image.size());
    return store;
}

ExtBlock gainsFrom(int first) {
    ExtBlock block{};
    for (int band = 0; band < 10; ++band)
        block.gain[band] = static_cast<int8_t>(first + band);
    return block;
}

// Saves and keeps what went to the disk, which differs from the store for a new curve.
struct Disk {
    std::vector<Image> writes;
    EqCurves::SaveResult save(EqCurveStore &store, std::u16string_view name, const ExtBlock &gains) {
        return EqCurves::save(store, name, gains,
                              [this](const EqCurveStore &s) { writes.push_back(imageOf(s)); });
    }
};

// n curves named "0", "1", ..., with gains i, i + 1, ...
EqCurveStore filled(int n) {
    EqCurveStore store{};
    Disk disk;
    for (int i = 0; i < n; ++i)
        disk.save(store, std::u16string(1, static_cast<char16_t>(u'0' + i)), gainsFrom(i));
    return store;
}

} // namespace

TEST(EqCurves, NewCurveIsWrittenBeforeItIsCounted) {
    EqCurveStore store{};
    Disk disk;
    ASSERT_EQ(disk.save(store, u"A业", gainsFrom(-20)), EqCurves::SaveResult::Added);
    Image expected{};
    expected[8] = 'A';
    expected[10] = 0x1A; // 业 is U+4E1A
    expected[11] = 0x4E;
    for (int band = 0; band < 10; ++band)
        expected[static_cast<size_t>(72 + band)] = static_cast<uint8_t>(-20 + band);
    ASSERT_EQ(disk.writes.size(), 1U);
    EXPECT_EQ(disk.writes[0], expected);
    expected[0] = 1; // in memory it counts
    EXPECT_EQ(imageOf(store), expected);

    ASSERT_EQ(disk.save(store, u"B", gainsFrom(1)), EqCurves::SaveResult::Added);
    expected[4] = 1; // the second is current, the count on disk still 1
    expected[8 + 74] = 'B';
    for (int band = 0; band < 10; ++band)
        expected[static_cast<size_t>(8 + 74 + 64 + band)] = static_cast<uint8_t>(1 + band);
    EXPECT_EQ(disk.writes[1], expected);
    EXPECT_EQ(store.count, 2);
}

TEST(EqCurves, SavingAKnownNameReplacesItsGainsOnly) {
    EqCurveStore store = filled(3);
    Image expected = imageOf(store);
    Disk disk;
    ASSERT_EQ(disk.save(store, u"1", gainsFrom(5)), EqCurves::SaveResult::Replaced);
    expected[4] = 1;
    for (int band = 0; band < 10; ++band)
        expected[static_cast<size_t>(8 + 74 + 64 + band)] = static_cast<uint8_t>(5 + band);
    EXPECT_EQ(imageOf(store), expected);
    ASSERT_EQ(disk.writes.size(), 1U);
    EXPECT_EQ(disk.writes[0], expected);
}

TEST(EqCurves, EleventhNameIsRefusedAndTenthStillReplaceable) {
    EqCurveStore store = filled(10);
    const Image before = imageOf(store);
    Disk disk;
    EXPECT_EQ(disk.save(store, u"eleven", gainsFrom(0)), EqCurves::SaveResult::Full);
    EXPECT_EQ(imageOf(store), before);
    EXPECT_TRUE(disk.writes.empty());
    EXPECT_EQ(disk.save(store, u"9", gainsFrom(0)), EqCurves::SaveResult::Replaced);
    EXPECT_EQ(store.count, 10);
}

TEST(EqCurves, NamesOfUpTo31UnitsFitAndLongerOnesAreCut) {
    EqCurveStore store{};
    Disk disk;
    const std::u16string full(31, u'业');
    disk.save(store, full, gainsFrom(0));
    EXPECT_EQ(EqCurves::nameOf(store.curve[0]), full);
    EXPECT_EQ(imageOf(store)[8 + 62], 0);
    EXPECT_EQ(disk.save(store, full + u"more", gainsFrom(3)), EqCurves::SaveResult::Replaced);
    EXPECT_EQ(store.curve[0].gain[0], 3);

    // Names must be equal as a whole, not by their beginning or case.
    EXPECT_EQ(EqCurves::find(store, full.substr(0, 30)), std::nullopt);
    disk.save(store, u"ab", gainsFrom(0));
    EXPECT_EQ(EqCurves::find(store, u"AB"), std::nullopt);
    EXPECT_EQ(EqCurves::find(store, u"ab"), 1);
}

// A new, shorter name must not keep units of a record that an earlier save left behind uncounted.
TEST(EqCurves, NewRecordStartsFromZeros) {
    EqCurveStore store{};
    Disk disk;
    disk.save(store, u"long name", gainsFrom(0));
    store.count = 0; // as the image on disk says
    disk.save(store, u"x", gainsFrom(0));
    Image expected{};
    expected[0] = 1;
    expected[8] = 'x';
    for (int band = 0; band < 10; ++band)
        expected[static_cast<size_t>(72 + band)] = static_cast<uint8_t>(band);
    EXPECT_EQ(imageOf(store), expected);
}

TEST(EqCurves, RemovingClosesTheGapAndKeepsCurrentInside) {
    struct Row {
        int count, current;
        const char16_t *name;
        bool removed;
        int newCount, newCurrent;
        const char *left; // first letters of the records in order
    };
    const Row rows[] = {
        {3, 2, u"0", true, 2, 1, "12"},         {3, 0, u"2", true, 2, 0, "01"},
        {3, 1, u"1", true, 2, 1, "02"},         {1, 0, u"0", true, 0, 0, ""},
        {3, 1, u"x", false, 3, 1, "012"},       {10, 9, u"9", true, 9, 8, "012345678"},
        {10, 9, u"0", true, 9, 8, "123456789"}, {0, 0, u"", false, 0, 0, ""},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.count << " curves, current " << row.current);
        EqCurveStore store = filled(row.count);
        store.current = row.current;
        EXPECT_EQ(EqCurves::remove(store, row.name), row.removed);
        Image expected{};
        expected[0] = static_cast<uint8_t>(row.newCount);
        expected[4] = static_cast<uint8_t>(row.newCurrent);
        for (size_t i = 0; i < std::strlen(row.left); ++i) {
            expected[8 + 74 * i] = static_cast<uint8_t>(row.left[i]);
            for (size_t band = 0; band < 10; ++band)
                expected[8 + 74 * i + 64 + band] =
                    static_cast<uint8_t>(row.left[i] - '0' + static_cast<int>(band));
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
        Image image;
        image.fill(0xFF); // names without a terminator
        EqCurveStore store = storeOf(image);
        store.count = wild;
        store.current = wild;
        EqCurves::sanitise(store);
        EXPECT_EQ(store.count, wild < 0 ? 0 : 10);
        EXPECT_EQ(store.current, wild < 0 ? 0 : 9);
        EXPECT_EQ(EqCurves::nameOf(store.curve[9]).size(), 32U);
        Disk disk;
        disk.save(store, u"new", gainsFrom(0));
        EqCurves::remove(store, std::u16string(40, u'\xFFFF'));
        EXPECT_EQ(store.count, wild < 0 ? 1 : 10);
    }
}
