// Built with the flags of SOLSYS_AVX2_FLAGS (cmake/SolsysTargets.cmake); called only where
// cpu_has_avx2() says so.
#include "solsys/place_kernel.inl"

namespace solsys {

void light_corrections_avx2(const ObserverLanes& observer, const LightLanes& light,
                            double days_per_au, Lane& out) {
    store(way_of(observer, light, days_per_au).correction, out);
}

void see_avx2(const ObserverLanes& observer, const LightLanes& light, double self,
              double days_per_au, SeenLanes& out) {
    see(observer, light, self, days_per_au, out);
}

}  // namespace solsys
