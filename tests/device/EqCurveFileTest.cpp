// The curve file on a real disk: what is read from good and bad files, and what is left after a save.
#include "device/EqCurveFile.h"

#include <gtest/gtest.h>

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
    ~EqCurveFileTest() override {
        SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }

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

// Two curves, the first of a name with the bytes 1A (end of a text file) and 0D 0A (a line's end in one).
EqCurveStore twoCurves() {
    EqCurveStore store{};
    store.count = 2;
    store.current = 1;
    const char16_t names[2][4] = {u"业\x0A0D电", u"B"};
    for (int i = 0; i < 2; ++i) {
        std::memcpy(store.curve[i].name, names[i], sizeof names[i]);
        for (int band = 0; band < 10; ++band)
            store.curve[i].gain[band] = static_cast<int8_t>(10 * i + band - 13);
    }
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
    put(std::vector<char>(900, 'x')); // a longer file leaves no tail
    EqCurveFile::save(file.wstring(), store);
    EXPECT_EQ(bytes(), imageOf(store));
    EXPECT_EQ(filesInFolder(), 1U);
    EXPECT_EQ(imageOf(loaded()), imageOf(store)); // 1A and 0D 0A included
    EXPECT_EQ(bytes(), imageOf(store));           // loading writes nothing
}

// Files of another size are read as text: up to 748 bytes, up to a 1A, with 0D 0A as one byte.
TEST_F(EqCurveFileTest, OtherSizesAreReadAsText) {
    struct Row {
        std::vector<char> content;
        std::vector<char> read; // the rest stays zero
    };
    std::vector<char> longer(1000, 'y');
    longer[0] = 3, longer[1] = longer[2] = longer[3] = 0;
    longer[4] = longer[5] = longer[6] = longer[7] = 0;
    const Row rows[] = {
        {{}, {}},
        {{1, 0, 0, 0, 0, 0, 0, 0, 'A'}, {1, 0, 0, 0, 0, 0, 0, 0, 'A'}},
        {{1, 0, 0, 0, 0, 0, 0, 0, 'A', 0x0D, 0x0A, 'B'}, {1, 0, 0, 0, 0, 0, 0, 0, 'A', 0x0A, 'B'}},
        {{1, 0, 0, 0, 0, 0, 0, 0, 'A', 0x1A, 'B'}, {1, 0, 0, 0, 0, 0, 0, 0, 'A'}},
        {longer, {longer.begin(), longer.begin() + 748}},
    };
    for (const Row &row : rows) {
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
    for (const int32_t number : {-1, 11, 1000000000, INT32_MIN}) {
        wild.count = wild.current = number;
        put(imageOf(wild));
        const EqCurveStore store = loaded();
        EXPECT_EQ(store.count, number < 0 ? 0 : 10);
        EXPECT_EQ(store.current, number < 0 ? 0 : 9);
        EXPECT_EQ(std::memcmp(store.curve, wild.curve, sizeof wild.curve), 0);
    }
}

// Nothing to save into: the old state stays, nothing is left behind, nothing hangs.
TEST_F(EqCurveFileTest, FolderInPlaceOfTheFile) {
    fs::create_directory(file);
    EXPECT_EQ(imageOf(loaded()), std::vector<char>(748));
    EqCurveFile::save(file.wstring(), twoCurves());
    EXPECT_TRUE(fs::is_directory(file));
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(EqCurveFileTest, ReadOnlyFileIsReadAndKept) {
    EqCurveStore old = twoCurves();
    old.current = 0;
    put(imageOf(old));
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(imageOf(loaded()), imageOf(old));
    EqCurveFile::save(file.wstring(), twoCurves());
    EXPECT_EQ(bytes(), imageOf(old));
    EXPECT_EQ(filesInFolder(), 1U);
}

// The second file cannot be made: the first is written in place.
TEST_F(EqCurveFileTest, WithoutASecondFileTheFirstIsWrittenInPlace) {
    put(std::vector<char>(748, 'o'));
    fs::create_directory(folder / L"eqs.bin.new");
    EqCurveFile::save(file.wstring(), twoCurves());
    EXPECT_EQ(bytes(), imageOf(twoCurves()));
}

// What a process left that ended between writing the second file and putting it in place.
TEST_F(EqCurveFileTest, LeftoverOfAnInterruptedSaveIsIgnoredAndReplaced) {
    put(imageOf(twoCurves()));
    std::ofstream(folder / L"eqs.bin.new", std::ios::binary) << "half";
    EXPECT_EQ(imageOf(loaded()), imageOf(twoCurves()));
    EqCurveStore next = twoCurves();
    next.count = 1;
    EqCurveFile::save(file.wstring(), next);
    EXPECT_EQ(bytes(), imageOf(next));
    EXPECT_EQ(filesInFolder(), 1U);
}
