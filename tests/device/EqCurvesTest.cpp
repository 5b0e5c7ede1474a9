// The curve store against exact bytes of its file image.
#include "device/EqCurves.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

namespace {

using EqCurves::SaveResult;
using Image = std::array<uint8_t, sizeof(EqCurveStore)>;

Image imageOf(const EqCurveStore &store) {
    Image image;
    std::memcpy(image.data(), &store, image.size());
    return image;
}

// Gains first, first + 1, ...
ExtBlock gainsFrom(int first) {
    ExtBlock block{};
    for (int band = 0; band < 10; ++band)
        block.gain[band] = static_cast<int8_t>(first + band);
    return block;
}

void putRecord(Image &image, size_t record, std::initializer_list<uint8_t> name, int firstGain) {
    const size_t offset = 8 + 74 * record;
    std::copy(name.begin(), name.end(), image.begin() + static_cast<ptrdiff_t>(offset));
    std::memcpy(&image[offset + 64], gainsFrom(firstGain).gain, 10);
}

struct SavedStore {
    EqCurveStore store{};
    std::vector<Image> writes; // what went to the disk

    SaveResult save(std::u16string_view name, int firstGain) {
        return EqCurves::save(store, name, gainsFrom(firstGain),
                              [this](const EqCurveStore &s) { writes.push_back(imageOf(s)); });
    }
};

// n curves named "0", "1", ..., with gains i, i + 1, ...
SavedStore filled(int n) {
    SavedStore saved;
    for (int i = 0; i < n; ++i)
        saved.save(std::u16string(1, static_cast<char16_t>(u'0' + i)), i);
    return saved;
}

} // namespace

TEST(EqCurves, NewCurveIsWrittenBeforeItIsCountedAndAKnownOneReplaced) {
    SavedStore saved;
    ASSERT_EQ(saved.save(u"A业", -20), SaveResult::Added);
    ASSERT_EQ(saved.save(u"B", 1), SaveResult::Added);
    ASSERT_EQ(saved.save(u"A业", 5), SaveResult::Replaced);
    ASSERT_EQ(saved.writes.size(), 3U);

    Image expected{};
    putRecord(expected, 0, {'A', 0, 0x1A, 0x4E}, -20); // 业 is U+4E1A
    EXPECT_EQ(saved.writes[0], expected);
    expected[0] = 1; // count; the curve of this write is not in it
    expected[4] = 1; // current
    putRecord(expected, 1, {'B'}, 1);
    EXPECT_EQ(saved.writes[1], expected);
    expected[0] = 2;
    expected[4] = 0;
    putRecord(expected, 0, {}, 5);
    EXPECT_EQ(saved.writes[2], expected);
    EXPECT_EQ(imageOf(saved.store), expected);
}

TEST(EqCurves, NamesAreCutTo31UnitsComparedWholeAndOnlyFoundWhereCounted) {
    SavedStore saved;
    const std::u16string full(31, u'业');
    saved.save(full + u"more", 0);
    EXPECT_EQ(EqCurves::nameOf(saved.store.curve[0]), full);
    saved.store.curve[0].name[31] = u'x'; // a damaged file: no end
    EXPECT_EQ(saved.save(full, 3), SaveResult::Replaced);
    EXPECT_EQ(EqCurves::find(saved.store, full.substr(0, 30)), std::nullopt);
    saved.save(u"ab", 0);
    EXPECT_EQ(EqCurves::find(saved.store, u"AB"), std::nullopt);
    EXPECT_EQ(EqCurves::find(saved.store, u"ab"), 1);
    saved.store.count = 1;
    EXPECT_EQ(EqCurves::find(saved.store, u"ab"), std::nullopt);
}

TEST(EqCurves, RemovingClosesTheGapAndKeepsCurrentInside) {
    const struct {
        int count, current;
        const char16_t *name;
        bool removed;
        uint8_t newCurrent;
        std::vector<uint8_t> left; // the records that stay, in order
    } rows[] = {
        {3, 2, u"0", true, 1, {1, 2}},  {3, 0, u"2", true, 0, {0, 1}},
        {1, 0, u"0", true, 0, {}},      {10, 9, u"0", true, 8, {1, 2, 3, 4, 5, 6, 7, 8, 9}},
        {2, 1, u"x", false, 1, {0, 1}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << row.count << " curves, current " << row.current);
        EqCurveStore store = filled(row.count).store;
        store.current = row.current;
        EXPECT_EQ(EqCurves::remove(store, row.name), row.removed);
        Image expected{};
        expected[0] = static_cast<uint8_t>(row.left.size());
        expected[4] = row.newCurrent;
        for (size_t i = 0; i < row.left.size(); ++i)
            putRecord(expected, i, {static_cast<uint8_t>('0' + row.left[i])}, row.left[i]);
        EXPECT_EQ(imageOf(store), expected);
    }
}
