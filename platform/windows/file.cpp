#include "platform/file.h"

#include <windows.h>

#include <algorithm>

#include "platform/windows/wide_text.h"

namespace solsys {
namespace {

HANDLE handle_of(std::intptr_t value) { return reinterpret_cast<HANDLE>(value); }

bool is_folder_flag(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

}  // namespace

const char kPathSeparator = '\\';

bool is_folder(const std::string& path) {
    const auto wide = utf16_from_utf8(path);
    if (!wide) return false;
    const DWORD attributes = GetFileAttributesW(wide->c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && is_folder_flag(attributes);
}

bool is_readable_file(const std::string& path) { return ReadFile::open(path).has_value(); }

std::vector<std::string> list_files(const std::string& folder) {
    std::vector<std::string> names;
    const auto pattern = utf16_from_utf8(folder + kPathSeparator + '*');
    if (!pattern) return names;
    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileW(pattern->c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        if (is_folder_flag(entry.dwFileAttributes)) continue;
        if (auto name = utf8_from_utf16(entry.cFileName)) names.push_back(std::move(*name));
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<ReadFile> ReadFile::open(const std::string& path) {
    const auto wide = utf16_from_utf8(path);
    if (!wide) return std::nullopt;
    const HANDLE handle = CreateFileW(wide->c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return std::nullopt;
    ReadFile file(reinterpret_cast<std::intptr_t>(handle), 0);
    LARGE_INTEGER length{};
    if (GetFileType(handle) != FILE_TYPE_DISK || !GetFileSizeEx(handle, &length))
        return std::nullopt;
    file.length_ = length.QuadPart;
    return file;
}

ReadFile::~ReadFile() {
    if (handle_ != kClosed) CloseHandle(handle_of(handle_));
}

bool ReadFile::read(std::int64_t offset, void* bytes, std::size_t size) const {
    if (offset < 0) return false;
    char* to = static_cast<char*>(bytes);
    while (size > 0) {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset & 0xffffffff);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        const DWORD part = static_cast<DWORD>(std::min<std::size_t>(size, 1u << 30));
        DWORD got = 0;
        if (!::ReadFile(handle_of(handle_), to, part, &got, &place) || got == 0) return false;
        to += got;
        offset += got;
        size -= got;
    }
    return true;
}

}  // namespace solsys
