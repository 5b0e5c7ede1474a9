#include "device/EqCurveFile.h"

#include "device/EqCurves.h"
#include "helpers/LogHelper.h"
#include "helpers/WinHandles.h"

namespace EqCurveFile {

namespace {

bool isMissing(const std::wstring &path) {
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES)
        return false;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

// One level deep: the folder beside the program. An existing one stays as it is.
void makeFolderOf(const std::wstring &path) {
    const size_t folderEnd = path.find_last_of(L"/\\");
    if (folderEnd != std::wstring::npos)
        CreateDirectoryW(path.substr(0, folderEnd).c_str(), nullptr);
}

void createEmpty(const std::wstring &path) {
    makeFolderOf(path);
    const EqCurveStore zeros{};
    WriteFileBytes(path.c_str(), &zeros, sizeof zeros);
}

bool holdsWholeStore(HANDLE file) {
    LARGE_INTEGER size{};
    return GetFileSizeEx(file, &size) && size.QuadPart == static_cast<LONGLONG>(sizeof(EqCurveStore));
}

// Reading as text stops at the byte 0x1A and turns 0D 0A into 0A, and UTF-16 names hold such bytes. A file of
// exactly the store's size is therefore taken byte by byte.
void readBinaryIfWhole(const std::wstring &path, EqCurveStore &store) {
    const UniqueFileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                            nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file || !holdsWholeStore(file.get()))
        return;
    EqCurveStore whole{};
    DWORD read = 0;
    if (ReadFile(file.get(), &whole, sizeof whole, &read, nullptr) && read == sizeof whole)
        store = whole;
}

enum class Draft { Whole, Short, NotMade };

// Whole means that all bytes are on the disk. A full disk shows up in WriteFileBytes' result or in the size.
Draft writeDraft(const std::wstring &path, const EqCurveStore &store) {
    const int result = WriteFileBytes(path.c_str(), &store, sizeof store);
    const UniqueFileHandle file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                                            nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return Draft::NotMade;
    return result == 0 && holdsWholeStore(file.get()) && FlushFileBuffers(file.get()) ? Draft::Whole
                                                                                      : Draft::Short;
}

// Null when the store was saved; otherwise why not.
const wchar_t *failureOfSaving(const std::wstring &path, const EqCurveStore &store) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY))
        return L"it is read-only"; // the user's wish, which not every system's move respects
    makeFolderOf(path);
    const std::wstring draftPath = path + L".new";
    const Draft draft = writeDraft(draftPath, store);
    if (draft == Draft::Whole &&
        MoveFileExW(draftPath.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return nullptr;
    if (draft != Draft::NotMade)
        DeleteFileW(draftPath.c_str());
    // No second file can be made or put in place here (rights, a reader that holds the old one): write in
    // place. A draft that came out short means a full disk, where writing in place would lose the old curves.
    if (draft == Draft::Short)
        return L"the disk is full";
    return WriteFileBytes(path.c_str(), &store, sizeof store) == 0 ? nullptr : L"it cannot be written";
}

} // namespace

void load(const std::wstring &path, EqCurveStore &store) {
    store = {};
    if (isMissing(path)) {
        createEmpty(path);
        return;
    }
    ReadFileBytes(path.c_str(), &store, sizeof store);
    readBinaryIfWhole(path, store);
    EqCurves::sanitise(store);
}

void save(const std::wstring &path, const EqCurveStore &store) {
    if (const wchar_t *failure = failureOfSaving(path, store))
        QOR_LOG(L"the curve file %s was not saved: %s", path.c_str(), failure);
}

} // namespace EqCurveFile
