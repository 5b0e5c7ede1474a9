// The curve file on a real disk: what is read from good and bad files, and what is left after a save.
#include "device/EqCurveFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>
#include <windows.h>

namespace fs = std::filesystem;

namespace {

class EqCurveFileTest : public testing::Test {
protected:
    EqCurveFileTest() {
        wchar_t temp[MAX_PATH];
        GetTempPathW(MAX_PATH, temp);
        folder = fs::path(temp) / (L"eq_curves_" + std::to_wstring(GetCurrentProcessId()));
        fs::remove_all(folder);
        fs::create_directories(folder);
        file = folder / L"eqs.bin";
    }
    ~EqCurveFileTest() override { fs::remove_all(folder); }

    void put(const std::vector<char> &bytes) const {
        std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::vector<char> bytes() const {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    EqCurveStore loaded() const {
        EqCurveStore store;
        std::memset(&store, 0x55, sizeof store);
        EqCurveFile::load(file.wstring(), store);
        return store;
    }
    size_t filesInFolder() const {
        return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    fs::path folder;
    fs::path file;
};

std::vector<char> imageOf(const EqCurveStore &store) {
    std::vector<char> image(sizeof store);
    std::memcpy(image.data(), &store, image.size());
    return image;
}

// The first of two names has the bytes 1A (end of a text file) and 0D 0A (a line's end in one).
EqCurveStore twoCurves() {
    EqCurveStore store{2, 1, {}};
    std::memcpy(store.curve[0].name, u"业\x0A0D电", 8);
    std::memcpy(store.curve[1].name, u"B", 4);
    std::memset(store.curve[1].gain, 0xEC, 10);
    return store;
}

} // namespace

TEST_F(EqCurveFileTest, MissingFileAndFolderAreMade) {
    fs::remove_all(folder);
    EXPECT_EQ(imageOf(loaded()), std::vector<char>(748));
    EXPECT_EQ(bytes(), std::vector<char>(748));
}

TEST_F(EqCurveFileTest, SavedCurvesComeBackWhole) {
    const EqCurveStore store = twoCurves();
    put(std::vector<char>(900, 'x'));                                   // a longer file leaves no tail
    std::ofstream(folder / L"eqs.bin.new", std::ios::binary) << "half"; // of an interrupted save
    EqCurveFile::save(file.wstring(), store);
    EXPECT_EQ(bytes(), imageOf(store));
    EXPECT_EQ(filesInFolder(), 1U);
    EXPECT_EQ(imageOf(loaded()), imageOf(store)); // 1A and 0D 0A included
    EXPECT_EQ(bytes(), imageOf(store));           // loading writes nothing
}

// Files of another size are read as text: up to 748 bytes, up to a 1A, with 0D 0A as one byte.
TEST_F(EqCurveFileTest, OtherSizesAreReadAsText) {
    std::vector<char> longer(1000, 'y');
    std::fill_n(longer.begin(), 8, '\0');
    const struct {
        std::vector<char> content;
        std::vector<char> read; // the rest stays zero
    } rows[] = {
        {{}, {}},
        {{1, 0, 0, 0, 0, 0, 0, 0, 'A', 0x0D, 0x0A, 'B'}, {1, 0, 0, 0, 0, 0, 0, 0, 'A', 0x0A, 'B'}},
        {{1, 0, 0, 0, 0, 0, 0, 0, 'A', 0x1A, 'B'}, {1, 0, 0, 0, 0, 0, 0, 0, 'A'}},
        {longer, {longer.begin(), longer.begin() + 748}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << row.content.size() << " bytes");
        put(row.content);
        std::vector<char> expected = row.read;
        expected.resize(748);
        EXPECT_EQ(imageOf(loaded()), expected);
        EXPECT_EQ(bytes(), row.content);
    }
}

TEST_F(EqCurveFileTest, WildNumbersAreClamped) {
    EqCurveStore wild = twoCurves();
    wild.count = wild.current = 1000000000;
    put(imageOf(wild));
    EXPECT_EQ(loaded().count, 10);
    EXPECT_EQ(loaded().current, 9);
}
