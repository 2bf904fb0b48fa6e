// A folder of a test's own, removed with all that is in it.
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

class TempFolder {
  public:
    TempFolder() {
        static std::atomic<int> counter{0};
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        path_ = std::filesystem::temp_directory_path() /
                ("solsys_test_" + std::to_string(now) + "_" + std::to_string(counter++));
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code ignored;  // a mapped file stays on some systems
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // Paths and names are UTF-8, also where the system prefers something else.
    [[nodiscard]] std::string path() const { return utf8(path_); }
    [[nodiscard]] std::string operator/(const std::string& name) const {
        return utf8(path_) + '/' + name;
    }
    // Writes a file and answers its path.
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / std::u8string(name.begin(), name.end()), std::ios::binary)
            << bytes;
        return *this / name;
    }

  private:
    static std::string utf8(const std::filesystem::path& path) {
        const std::u8string text = path.u8string();
        return {text.begin(), text.end()};
    }

    std::filesystem::path path_;
};
