// The curve file on a real disk: what is read from good and bad files, and what is left after a save.
#include "device/EqCurveFile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <windows.h>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

class EqCurveFileTest : public testing::Test {
protected:
    EqCurveFileTest() { fs::create_directories(folder); }
    ~EqCurveFileTest() override { fs::remove_all(folder); }

    void put(const std::string &bytes) const { std::ofstream(file, std::ios::binary) << bytes; }
    std::string bytes() const {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    // The store's image after loading.
    std::string loaded() const {
        EqCurveStore store;
        std::memset(&store, 0x55, sizeof store);
        EqCurveFile::load(file.wstring(), store);
        return {reinterpret_cast<const char *>(&store), sizeof store};
    }

    const fs::path folder =
        fs::temp_directory_path() / (L"eq_curves_" + std::to_wstring(GetCurrentProcessId()));
    const fs::path file = folder / L"eqs.bin";
};

std::string padded(std::string image) {
    image.resize(sizeof(EqCurveStore));
    return image;
}

} // namespace

TEST_F(EqCurveFileTest, MissingFileAndFolderAreMade) {
    fs::remove_all(folder);
    EXPECT_EQ(loaded(), padded(""));
    EXPECT_EQ(bytes(), padded(""));
    fs::remove_all(folder);
    EqCurveFile::save(file.wstring(), EqCurveStore{});
    EXPECT_EQ(bytes(), padded(""));
}

TEST_F(EqCurveFileTest, SavedCurvesComeBackWhole) {
    // A name with the bytes 1A (end of a text file) and 0D 0A (a line's end in one).
    const std::string image = padded("\1\0\0\0\0\0\0\0\x1A\x4E\x0D\x0A\x35\x75"s);
    EqCurveStore store;
    std::memcpy(&store, image.data(), sizeof store);
    put(std::string(900, 'x'));                                         // a longer file leaves no tail
    std::ofstream(folder / L"eqs.bin.new", std::ios::binary) << "half"; // of an interrupted save
    EqCurveFile::save(file.wstring(), store);
    EXPECT_EQ(bytes(), image);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
    EXPECT_EQ(loaded(), image);
    EXPECT_EQ(bytes(), image) << "loading wrote";
}

// Files of another size are read as text: up to 748 bytes, up to a 1A, with 0D 0A as one byte.
TEST_F(EqCurveFileTest, OddFilesAreReadAsFarAsTheyGo) {
    const std::string one = "\1\0\0\0\0\0\0\0"s; // count and current
    const struct {
        std::string content, read; // the rest stays zero
    } rows[] = {
        {"", ""},
        {one + "A\x0D\x0A" + "B", one + "A\x0A" + "B"},
        {one + "A\x1A" + "B", one + "A"},
        {one + std::string(1000, '\x12'), one + std::string(740, '\x12')},
        {padded(one + std::string(64, 'y') + "\x14\x15\x7F\xEC\xEB\x80"), // gains 20, 21, 127, -20, -21, -128
         padded(one + std::string(64, 'y') + "\x14\x14\x14\xEC\xEC\xEC")},
        {padded("\xFF\xFF\xFF\xFF\x0A"s), padded("\0\0\0\0\x09"s)},  // count -1, current 10
        {padded("\0\xCA\x9A\x3B\xFF\xFF\xFF\xFF"s), padded("\x0A")}, // count 10^9, current -1
    };
    for (const auto &row : rows) {
        put(row.content);
        EXPECT_EQ(loaded(), padded(row.read));
        EXPECT_EQ(bytes(), row.content);
    }
}
