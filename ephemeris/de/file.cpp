// Choosing, mapping and replacing the process's DE file.
#include "platform/file.h"

#include <cmath>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <utility>

#include "core/answer_or.h"
#include "ephemeris/de/open_file.h"
#include "platform/clock.h"
#include "solsys/platform.h"

namespace solsys {

constinit OpenDeFile de_file;

namespace {

// What is published, and who may look at it or change it: for the length of a pointer's copy.
std::mutex published_mutex;
std::shared_ptr<DeFile> published;

void publish(std::shared_ptr<DeFile> file) {
    const std::lock_guard lock(published_mutex);
    published.swap(file);
    de_file.generation.fetch_add(1, std::memory_order_release);
}

constexpr std::uint32_t kReplaceWait = 100000;  // microseconds: most evaluations end within it

// Opening, clearing and replacing from several threads take turns; evaluations never wait here.
std::mutex de_file_mutex;

std::string in_folder(const std::string& folder, const std::string& name) {
    return folder + kPathSeparator + name;
}

// The DE file of a folder that covers most time; the first by name of equal ones, or empty.
std::string longest_in_folder(const std::string& folder) {
    std::string best;
    double longest = 0;
    for (const std::string& name : list_files(folder)) {
        const std::string path = in_folder(folder, name);
        const auto header = DE_Ephemeris::readHeader(path.c_str());
        if (!header) continue;
        const double covered = header->end_jd - header->start_jd;
        if (covered > longest) {
            longest = covered;
            best = path;
        }
    }
    return best;
}

std::string default_file() {
    const std::string folder = in_folder(StarwickPath::GetWorkPath(), "de441pc");
    const std::string complete = in_folder(folder, "binm5000-p10000.408");
    return is_readable_file(complete) ? complete : in_folder(folder, "binp0999-3000.406");
}

std::string choose_file(const std::string& path) {
    if (!is_folder(path) && DE_Ephemeris::readHeader(path.c_str())) return path;
    if (!path.empty()) {
        std::string found = longest_in_folder(path);
        if (!found.empty()) return found;
    }
    return default_file();
}

bool map_file(const std::string& path) {
    if (!is_readable_file(path)) {
        PrintDebugString("Ephemeris file not found:\n%s", path.c_str());
        return false;
    }
    auto header = DE_Ephemeris::readHeader(path.c_str());
    if (!header) return false;

    std::uint32_t error = 0;
    MappedFile mapping = MappedFile::open(path, &error);
    if (mapping.data() == nullptr) {
        PrintDebugString("Ephemeris mapping error: 0x%x (%d)", error, static_cast<int>(error));
        return false;
    }
    // The file may have changed since its header was checked.
    const std::int64_t count = data_records(*header);
    if (mapping.size() / static_cast<std::int64_t>(sizeof(double)) / header->ncoeff < count + 2)
        return false;

    auto file = std::make_shared<DeFile>();
    file->mapping = std::move(mapping);
    file->records = static_cast<const double*>(file->mapping.data());
    const double recorded = static_cast<double>(count) * header->span;
    file->last_jd = recorded < header->end_jd - header->start_jd ? header->start_jd + recorded
                                                                 : header->end_jd;
    file->count = count;
    file->start_day = std::floor(header->start_jd);
    file->start_fraction = header->start_jd - file->start_day;
    file->per_span = 1.0 / header->span;
    file->per_au = 1.0 / header->au_km;
    file->moon_share = 1.0 / (header->emrat + 1.0);
    file->header = std::move(*header);
    de_file.time_range[0] = file->header.start_jd;
    de_file.time_range[1] = file->header.end_jd;
    publish(std::move(file));
    return true;
}

bool open_file(const char* path) {
    return answer_or(false,
                     [path] { return map_file(choose_file(path != nullptr ? path : "")); });
}

}  // namespace

std::shared_ptr<const DeFile> current_de_file() {
    const std::lock_guard lock(published_mutex);
    return published;
}

bool de_file_is_open() { return current_de_file() != nullptr; }

}  // namespace solsys

bool DE_Ephemeris::open(const char* path) {
    const std::lock_guard lock(solsys::de_file_mutex);
    return solsys::de_file_is_open() || solsys::open_file(path);
}

void DE_Ephemeris::clear() {
    using namespace solsys;
    const std::lock_guard lock(de_file_mutex);
    std::shared_ptr<DeFile> file;
    {
        const std::lock_guard look(published_mutex);
        file = published;
    }
    if (file == nullptr) return;
    publish(nullptr);
    // Evaluations are over, so nobody reads; states that still own the file learn from the
    // generation that it is gone.
    file->mapping.unmap();
}

double* DE_Ephemeris::getTimeRange() { return solsys::de_file.time_range; }

bool DE_Ephemeris::replaceEphemeris(const char* path) {
    using namespace solsys;
    const std::lock_guard lock(de_file_mutex);
    de_file.replacing.store(true, std::memory_order_release);
    sleep_microseconds(kReplaceWait);
    // The new file takes the place of the old one in one step; evaluations that are still under
    // way keep the old one mapped.
    const bool opened = open_file(path);
    if (!opened) publish(nullptr);
    de_file.replacing.store(false, std::memory_order_release);
    return opened;
}
