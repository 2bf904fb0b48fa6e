/// \file
/// The whole exported interface.
#pragma once

#include "solsys/body_rotation.h"
#include "solsys/calendar.h"
#include "solsys/de_ephemeris.h"
#include "solsys/earth_orientation.h"
#include "solsys/element_records.h"
#include "solsys/export.h"
#include "solsys/integrator.h"
#include "solsys/kepler.h"
#include "solsys/magnitudes.h"
#include "solsys/observer.h"
#include "solsys/platform.h"
#include "solsys/satellite_theory.h"
#include "solsys/solar_system.h"
#include "solsys/ss_object.h"
#include "solsys/sso_id.h"
#include "solsys/stars.h"
#include "solsys/time_scales.h"
#include "solsys/toolkit.h"
#include "solsys/version.h"
