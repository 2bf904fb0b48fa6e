// Checks of what a host hands in.
#pragma once

#include <algorithm>
#include <initializer_list>

namespace solsys {

inline bool any_null(std::initializer_list<const void*> pointers) {
    return std::any_of(pointers.begin(), pointers.end(),
                       [](const void* pointer) { return pointer == nullptr; });
}

}  // namespace solsys
