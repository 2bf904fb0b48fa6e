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
void set(std::string Folders::*folder, const char* path) {
    folders().*folder = path != nullptr ? std::string(path) : default_folders().*folder;
}

}  // namespace

const char* StarwickPath::GetPath() { return folders().data.c_str(); }
const char* StarwickPath::GetWorkPath() { return folders().work.c_str(); }
const char* StarwickPath::GetEphemerisPath() { return folders().ephemeris.c_str(); }

void StarwickPath::SetPath(const char* path) { set(&Folders::data, path); }
void StarwickPath::SetWorkPath(const char* path) { set(&Folders::work, path); }
void StarwickPath::SetEphemerisPath(const char* path) { set(&Folders::ephemeris, path); }
