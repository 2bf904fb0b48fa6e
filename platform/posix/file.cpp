#include "platform/file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace solsys {

static_assert(sizeof(off_t) == 8, "ephemeris files pass 2 GB");

const char kPathSeparator = '/';

bool is_folder(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool is_readable_file(const std::string& path) { return ReadFile::open(path).has_value(); }

std::vector<std::string> list_files(const std::string& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
    if (!entries) return names;
    while (const dirent* entry = readdir(entries.get())) {
        std::string name = entry->d_name;
        // d_type is a hint that not every file system gives, and says nothing of a link's
        // target.
        if (!is_folder(folder + kPathSeparator + name)) names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<ReadFile> ReadFile::open(const std::string& path) {
    // Non-blocking: opening a pipe without a writer would otherwise wait for one.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return std::nullopt;
    ReadFile file(descriptor, 0);
    struct stat info {};
    if (fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
    file.length_ = info.st_size;
    return file;
}

ReadFile::~ReadFile() {
    if (handle_ != kClosed) ::close(static_cast<int>(handle_));
}

bool ReadFile::read(std::int64_t offset, void* bytes, std::size_t size) const {
    char* to = static_cast<char*>(bytes);
    while (size > 0) {
        const ssize_t got = pread(static_cast<int>(handle_), to, size, offset);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        to += got;
        offset += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

}  // namespace solsys
