// Stars, minor planets and comets from CSV tables with named columns, in any order; columns of
// other names are ignored.
#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <string>

#include "io/comets.h"
#include "io/minor_planets.h"
#include "io/problem.h"
#include "solsys/stars.h"

namespace solsys_io {

// A star and what it is called.
struct ListedStar {
    StarObject object;          // direction and motion at J2000.0, magnitude
    std::uint32_t hip = 0;      // number in the Hipparcos catalogue; 0: none
    std::string name;           // proper name: "Vega"
    std::string bayer;          // "alp Lyr"
    std::string flamsteed;      // "3 Lyr"
    std::string constellation;  // "Lyr"
};

// Columns ra_deg and dec_deg (J2000.0) are needed; pm_ra_mas_yr (with the cosine of the
// declination), pm_dec_mas_yr, parallax_mas, rv_km_s, v_mag, hip, name, bayer, flamsteed and
// con are taken if there, their empty cells being unknown.
ReadSummary read_star_table(std::istream& in,
                            const std::function<void(const ListedStar&)>& on_star,
                            const ProblemHandler& on_problem = {});

// Columns name, epoch_jd, a_au, e, i_deg, node_deg, peri_deg and mean_anomaly_deg are needed;
// number, n_deg_day (else from the semi-major axis), h_mag and g_slope are taken if there.
ReadSummary read_minor_planet_table(std::istream& in,
                                    const std::function<void(const MinorPlanet&)>& on_planet,
                                    const ProblemHandler& on_problem = {});

// Columns designation, epoch_jd, q_au, e, i_deg, node_deg, peri_deg and t_peri_jd are needed;
// h_mag and k_mag are taken if there.
ReadSummary read_comet_table(std::istream& in,
                             const std::function<void(const Comet&)>& on_comet,
                             const ProblemHandler& on_problem = {});

}  // namespace solsys_io
