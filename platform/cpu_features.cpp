#include "platform/cpu_features.h"

namespace solsys {

bool cpu_has_avx2() {
#if defined(__x86_64__)
    // The compiler's runtime asks the processor once, when the library is loaded.
    return __builtin_cpu_supports("avx2") != 0;
#else
    return false;
#endif
}

}  // namespace solsys
