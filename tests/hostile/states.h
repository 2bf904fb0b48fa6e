// The states a model can be in when a host errs.
#pragma once

#include <functional>

#include "tests/hostile/attack.h"

namespace hostile {

struct State {
    const char* name;
    std::function<void(CSWSolSys&, Attacker&)> reach;
};
inline const State kStates[] = {
    {"Constructed", [](CSWSolSys&, Attacker&) {}},
    {"WithoutAnInstant", [](CSWSolSys& m, Attacker&) { m.InitSys(""); }},
    {"OnTheTheory", [](CSWSolSys& m, Attacker&) { m.InitSys(""), m.UpdateSys(2460000, 0.25); }},
    {"OnTheFile",
     [](CSWSolSys& m, Attacker&) { m.InitSys(SOLSYS_DE405), m.UpdateSys(2450000, 0.1); }},
    {"BeyondAllSources",
     [](CSWSolSys& m, Attacker&) { m.InitSys(""), m.UpdateSys(9000000, 0); }},
    {"AtNoInstant",
     [](CSWSolSys& m, Attacker& a) { m.InitSys(""), m.UpdateSys(a.integer(), a.number()); }},
    {"SeenFromAnywhere",
     [](CSWSolSys& m, Attacker& a) {
         m.InitSys("");
         m.UpdateSys(2460000, 0.25);
         const OBSERVER anywhere = a.observer();
         m.SetObserver(&anywhere);
     }},
};

}  // namespace hostile
