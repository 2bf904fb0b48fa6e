// Rotation parameters of bodies beyond the catalogue, which a host adds. One registry serves
// every model of the process. It takes no lock: entries are to be added before models compute,
// and not while one does in another thread.
#pragma once

#include "solsys/body_rotation.h"

namespace solsys::rotation_registry {

// Appends and indexes the parameters; a key that is present keeps what it has.
void add(const ObjectKey& key, const BodyRotationParams& params);

int count();

// The entry in order of addition; null outside 0 .. count() - 1. Entries never move: the
// pointer stays valid however many are added later.
const BodyRotationParams* get(int index);

// The entry with exactly that key, or null.
const BodyRotationParams* get(const ObjectKey& key);

}  // namespace solsys::rotation_registry
