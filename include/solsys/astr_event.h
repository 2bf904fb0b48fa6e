/// \file
/// What the classes that search for astronomical events have in common.
#pragma once

#include "solsys/export.h"

/// Marks a class as a search for astronomical events. It holds nothing and has no virtual
/// operations: do not delete a search through it.
class SOLSYS_API CSWAstrEv_dll {};
