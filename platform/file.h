// Read-only access to files and folders. Paths and names are UTF-8 on every system; text that
// is not (where the system cares) is a path that does not exist.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace solsys {

// The separator to put between a folder and a name.
extern const char kPathSeparator;

bool is_folder(const std::string& path);

// Whether an ordinary file can be opened for reading.
bool is_readable_file(const std::string& path);

// Names (not paths) of what is in the folder and is not a folder itself, with and without a
// dot, sorted by bytes. Empty when the folder cannot be read.
std::vector<std::string> list_files(const std::string& folder);

// An ordinary file open for reading; 64-bit lengths and offsets.
class ReadFile {
  public:
    // Empty for folders, devices, pipes and whatever cannot be opened; never blocks.
    static std::optional<ReadFile> open(const std::string& path);

    ReadFile(ReadFile&& other) noexcept
        : handle_(std::exchange(other.handle_, kClosed)), length_(other.length_) {}
    ReadFile& operator=(ReadFile&& other) noexcept {
        std::swap(handle_, other.handle_);
        std::swap(length_, other.length_);
        return *this;
    }
    ~ReadFile();

    // Length in bytes when the file was opened.
    [[nodiscard]] std::int64_t length() const { return length_; }

    // Reads size bytes from offset on: all of them, or false.
    [[nodiscard]] bool read(std::int64_t offset, void* bytes, std::size_t size) const;

  private:
    static constexpr std::intptr_t kClosed = -1;
    ReadFile(std::intptr_t handle, std::int64_t length) : handle_(handle), length_(length) {}

    std::intptr_t handle_;  // descriptor, or system handle
    std::int64_t length_;
};

}  // namespace solsys
