// The minor planets and comets that come with the library, and how people call such bodies.
#pragma once

#include <optional>
#include <string>

#include "io/comets.h"
#include "io/minor_planets.h"
#include "sky/text.h"
#include "solsys/sky/body.h"

namespace solsys::sky {

// Whether `wanted`, folded, names the body: "vesta", "4", "(4) vesta", "2007 TA418"; "1p",
// "halley", "1p/halley", "c/1995 o1", "hale-bopp", each also as the catalogue writes it.
bool is_called(const solsys_io::MinorPlanet& planet, const std::string& wanted);
bool is_called(const solsys_io::Comet& comet, const std::string& wanted);

// The name for people: "Vesta", "1P/Halley".
std::string name_of(const solsys_io::MinorPlanet& planet);
std::string name_of(const solsys_io::Comet& comet);

// From the shipped sample.
std::optional<solsys_io::MinorPlanet> sample_minor_planet(const std::string& text);
// A comet and its place in the sample, counted from 1. Of several orbits, that with the epoch
// nearest to `near_jd`.
struct SampleComet {
    solsys_io::Comet comet;
    int number = 0;
};
std::optional<SampleComet> sample_comet(const std::string& text, double near_jd);
std::optional<SampleComet> sample_comet(int number);

Body body_of(const solsys_io::MinorPlanet& planet);
Body body_of(const solsys_io::Comet& comet, int number = 0);

void suggest_small_bodies(Suggestions& suggestions);

}  // namespace solsys::sky
