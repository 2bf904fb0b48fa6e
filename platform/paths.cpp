#include <new>
#include <string>

#include "platform/file.h"
#include "platform/system.h"
#include "solsys/platform.h"

namespace {

struct Folders {
    std::string data, work, ephemeris;
};

Folders default_folders() {
    const std::string data = solsys::system_data_folder();
    const std::string under = data + solsys::kPathSeparator;
    return {data, under + "work", under + "ephemeris"};
}

Folders& folders() {
    static Folders current = default_folders();
    return current;
}

// The new text is complete before the old one goes: the host may hand back what it was given.
// Where memory ends the old one stays.
void set(std::string Folders::*folder, const char* path) {
    try {
        folders().*folder = path != nullptr ? std::string(path) : default_folders().*folder;
    } catch (const std::bad_alloc&) {
        PrintDebugString("StarwickPath: no memory for a folder's name\n");
    }
}

const char* get(std::string Folders::*folder) {
    try {
        return (folders().*folder).c_str();
    } catch (const std::bad_alloc&) {
        return "";
    }
}

}  // namespace

const char* StarwickPath::GetPath() { return get(&Folders::data); }
const char* StarwickPath::GetWorkPath() { return get(&Folders::work); }
const char* StarwickPath::GetEphemerisPath() { return get(&Folders::ephemeris); }

void StarwickPath::SetPath(const char* path) { set(&Folders::data, path); }
void StarwickPath::SetWorkPath(const char* path) { set(&Folders::work, path); }
void StarwickPath::SetEphemerisPath(const char* path) { set(&Folders::ephemeris, path); }
