#include "platform/cpu_features.h"

namespace solsys {

// The compiler's runtime asks the processor once, when the library is loaded.
bool cpu_has_avx2() {
#if defined(__x86_64__)
    return __builtin_cpu_supports("avx2") != 0;
#else
    return false;
#endif
}

bool cpu_has_avx512() {
#if defined(__x86_64__)
    return __builtin_cpu_supports("avx512f") != 0;
#else
    return false;
#endif
}

}  // namespace solsys
