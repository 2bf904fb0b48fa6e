// A whole file mapped read-only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace solsys {

// The bytes stay readable as long as the object lives and nobody cuts the file short. An empty
// object maps nothing.
class MappedFile {
  public:
    constexpr MappedFile() = default;
    // An empty object when the file cannot be opened or mapped (an empty file cannot): error,
    // if given, is then the system's error number.
    static MappedFile open(const std::string& path, std::uint32_t* error = nullptr);

    MappedFile(MappedFile&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    MappedFile& operator=(MappedFile&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~MappedFile() { unmap(); }

    // Start of the file, at a page boundary; null when empty.
    [[nodiscard]] const void* data() const { return data_; }
    [[nodiscard]] std::int64_t size() const { return size_; }

    void unmap();

  private:
    const void* data_ = nullptr;
    std::int64_t size_ = 0;
};

}  // namespace solsys
