// Which orbit a spacecraft is on at an instant.
#pragma once

#include "core/instant.h"
#include "solsys/element_records.h"
#include "solsys/element_tables.h"

namespace solsys {

// The place of an instant in a track: the record in force, the one after it (null after the
// last), and how far it is from the one to the other, 0 to 1.
struct TrackPlace {
    const SpacecraftRecord* record = nullptr;
    const SpacecraftRecord* next = nullptr;
    double weight = 0;

    [[nodiscard]] bool changes_centre() const {
        return next != nullptr && (next->central_type != record->central_type ||
                                   next->central_number != record->central_number);
    }
};

// record is null before the first epoch.
TrackPlace locate(const SpacecraftTrack& track, Instant t);

// From angle a towards angle b the short way round, w = 0 to 1.
double interpolate_angle(double a, double b, double w);

// The elements of a record as `Kepler` takes them: with the semi-major axis of an ellipse in
// place of its pericentre distance.
Elements elements_of(const SpacecraftRecord& record);

// The elements in force: the record's own, or, on the way to a record about the same body,
// those in between, with the instant as their epoch.
Elements elements_at(const TrackPlace& place, Instant t);

}  // namespace solsys
