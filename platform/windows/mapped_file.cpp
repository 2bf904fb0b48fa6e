#include "platform/mapped_file.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace solsys {

MappedFile MappedFile::open(const std::string& path, std::uint32_t* error) {
    const auto fail = [error](DWORD number) {
        if (error != nullptr) *error = number;
        return MappedFile();
    };
    const auto wide = utf16_from_utf8(path);
    if (!wide) return fail(ERROR_NO_UNICODE_TRANSLATION);
    const HANDLE file = CreateFileW(wide->c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return fail(GetLastError());

    LARGE_INTEGER size{};
    DWORD number = 0;
    const void* view = nullptr;
    const HANDLE mapping =
        GetFileSizeEx(file, &size)
            ? CreateFileMappingW(file, nullptr, PAGE_READONLY,
                                 static_cast<DWORD>(size.HighPart), size.LowPart, nullptr)
            : nullptr;
    if (mapping != nullptr) view = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
    if (view == nullptr) number = GetLastError();
    // The view keeps the file and its mapping alive.
    if (mapping != nullptr) CloseHandle(mapping);
    CloseHandle(file);
    if (view == nullptr) return fail(number);

    MappedFile result;
    result.data_ = view;
    result.size_ = size.QuadPart;
    return result;
}

void MappedFile::unmap() {
    if (data_ == nullptr) return;
    UnmapViewOfFile(data_);
    data_ = nullptr;
    size_ = 0;
}

}  // namespace solsys
