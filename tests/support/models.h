// Models and observers that several tests start from.
#pragma once

#include <memory>

#include "tests/support/sky_models.h"

namespace support {

// A model on the built-in theories, whatever another test left open.
inline std::unique_ptr<CSWSolSys> built_in_model() {
    return solsys::test::make_model(solsys::test::Source::kBuiltIn);
}

inline OBSERVER observer(std::int8_t kind, std::int32_t body, double l0 = 0, double l1 = 0,
                         double l2 = 0) {
    OBSERVER o;
    o.kind = kind;
    o.body_type = SSO_PLNT;
    o.body_number = body;
    o.location[0] = l0, o.location[1] = l1, o.location[2] = l2;
    return o;
}

inline OBSERVER on_moon(std::int8_t kind, std::int32_t moon, double l0 = 0, double l1 = 0,
                        double l2 = 0) {
    OBSERVER o = observer(kind, moon, l0, l1, l2);
    o.body_type = SSO_MOON;
    return o;
}

}  // namespace support
