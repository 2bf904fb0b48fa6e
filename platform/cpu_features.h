// What the processor at hand can do, for the few loops that exist in more than one build.
#pragma once

namespace solsys {

// Whether 256-bit vector instructions (AVX2) may be used: processor and operating system
// both agree. Costs a load and a test; false on every processor that is not x86-64.
bool cpu_has_avx2();
// Likewise for 512-bit vector instructions (AVX-512F).
bool cpu_has_avx512();

}  // namespace solsys
