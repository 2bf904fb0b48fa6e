// What the debug print and the path service need from the operating system.
#pragma once

#include <string>

namespace solsys {

// Debug text that no handler wants: the system's debug output, if it has one.
void system_debug_output(const char* text);

// Where this library keeps the data of the user, or of the machine when the user has no place.
std::string system_data_folder();

}  // namespace solsys
