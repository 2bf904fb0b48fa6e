#include "platform/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace solsys {

MappedFile MappedFile::open(const std::string& path, std::uint32_t* error) {
    const auto fail = [error](int number) {
        if (error != nullptr) *error = static_cast<std::uint32_t>(number);
        return MappedFile();
    };
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return fail(errno);

    struct stat info {};
    void* view = MAP_FAILED;
    int number = 0;
    if (fstat(descriptor, &info) != 0) {
        number = errno;
    } else if (!S_ISREG(info.st_mode) || info.st_size == 0) {
        number = EINVAL;
    } else {
        view = mmap(nullptr, static_cast<std::size_t>(info.st_size), PROT_READ, MAP_SHARED,
                    descriptor, 0);
        if (view == MAP_FAILED) number = errno;
    }
    ::close(descriptor);  // the mapping stays
    if (view == MAP_FAILED) return fail(number);

    MappedFile file;
    file.data_ = view;
    file.size_ = info.st_size;
    return file;
}

void MappedFile::unmap() {
    if (data_ == nullptr) return;
    munmap(const_cast<void*>(data_), static_cast<std::size_t>(size_));
    data_ = nullptr;
    size_ = 0;
}

}  // namespace solsys
