#include "solsys/place_kernel.inl"

namespace solsys {

void light_corrections_baseline(const ObserverLanes& observer, const LightLanes& light,
                                double days_per_au, Lane& out) {
    store(way_of(observer, light, days_per_au).correction, out);
}

void see_baseline(const ObserverLanes& observer, const LightLanes& light, double self,
                  double days_per_au, SeenLanes& out) {
    see(observer, light, self, days_per_au, out);
}

}  // namespace solsys
