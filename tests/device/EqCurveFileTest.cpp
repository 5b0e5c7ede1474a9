// The curve file on a real disk: what is read from good and bad files, and what is left after a save.
#include "device/EqCurveFile.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

// Only a file of the store's size is taken as it is; others are text, up to a 1A, with 0D 0A as one byte.
TEST(EqCurveFile, IsReadAsFarAsItGoesAndSavedWhole) {
    const std::filesystem::path folder = L"C:\\windows\\temp\\curves", file = folder / L"eqs.bin";
    const auto padded = [](std::string image) { return image.append(748 - image.size(), '\0'); };
    const std::string one("\1\0\0\0\0\0\0\0", 8); // count and current
    const std::string name = one + "\x1A\x4E\x0D\x0A" + std::string(60, 'y');
    const std::pair<std::string, std::string> rows[] = {
        {one + "A\x0D\x0A" + "B\x1A" + "C", one + "A\x0A" + "B"},
        {one + std::string(1000, '\x12'), one + std::string(740, '\x12')},
        {padded(name + "\x14\x15\x7F\xEC\xEB\x80"), name + "\x14\x14\x14\xEC\xEC\xEC"}, // gains beyond 20
        {padded("\xFF\xFF\xFF\xFF\x0A"), std::string("\0\0\0\0\x09", 5)},   // count -1, current 10
        {padded(std::string("\0\xCA\x9A\x3B\xFF\xFF\xFF\xFF", 8)), "\x0A"}, // count 10^9, current -1
    };
    const auto bytes = [&] {
        std::ifstream in(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    EqCurveStore store{};
    std::filesystem::remove_all(folder);
    EqCurveFile::save(file.wstring(), store);
    EXPECT_EQ(std::filesystem::remove_all(folder), 2u);
    EqCurveFile::load(file.wstring(), store);
    EXPECT_EQ(bytes(), padded(""));
    for (const auto &[content, read] : rows) {
        std::ofstream(file, std::ios::binary) << content;
        std::ofstream(folder / L"eqs.bin.new", std::ios::binary) << "half"; // of an interrupted save
        std::memset(&store, 0x55, sizeof store);
        EqCurveFile::load(file.wstring(), store);
        EXPECT_EQ(std::string(reinterpret_cast<const char *>(&store), sizeof store), padded(read));
        EXPECT_EQ(bytes(), content);
        EqCurveFile::save(file.wstring(), store);
        EXPECT_EQ(bytes(), padded(read));
        EXPECT_FALSE(std::filesystem::exists(folder / L"eqs.bin.new"));
    }
}
