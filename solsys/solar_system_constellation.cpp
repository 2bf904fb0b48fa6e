#include "solsys/constellation_table.h"
#include "solsys/model.h"
#include "solsys/toolkit.h"

char CSWSolSys::RADecInConstell(double ra, double dec) const {
    const double place[3] = {1.0, ra, dec};
    double of_date[3];
    sfp(place, of_date);
    const solsys::Vec3 j2000 =
        transpose_times(model_->current.frames.cur_from_j2000, solsys::load(of_date));
    double there[3];
    if (model_->bodies.modern != nullptr) {
        double b1875[3];
        store(model_->b1875_from_gcrs * j2000, b1875);
        psf1(b1875, 1.0, there);
        return static_cast<char>(solsys::constellation_of(there[1], there[2]));
    }
    // The boundaries were drawn for B1875.0; this model looks them up at B1850.0, which names
    // another constellation for two directions in a hundred, all close to a boundary.
    double b1850[3];
    store(model_->b1850_from_j2000 * j2000, b1850);
    psf1(b1850, 1.0, there);
    return static_cast<char>(solsys::constellation_of(there[1], there[2]));
}
