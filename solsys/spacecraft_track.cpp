#include "solsys/spacecraft_track.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/two_body/kepler_equation.h"

namespace solsys {
namespace {

Instant epoch_of(const SpacecraftRecord& record) {
    return {record.epoch_day, record.epoch_fraction};
}

SpacecraftRecord interpolated(const SpacecraftRecord& a, const SpacecraftRecord& b, double w,
                              Instant t) {
    const auto linear = [w](double from, double to) { return (1.0 - w) * from + w * to; };
    SpacecraftRecord out = a;
    out.epoch_day = t.day;
    out.epoch_fraction = t.fraction;
    out.q = linear(a.q, b.q);
    out.e = linear(a.e, b.e);
    out.i = interpolate_angle(a.i, b.i, w);
    out.node = interpolate_angle(a.node, b.node, w);
    out.peri = interpolate_angle(a.peri, b.peri, w);
    out.n = linear(a.n, b.n);
    // The mean anomaly of an open orbit is no angle: it runs through without turning over.
    const bool closed = a.e < 1.0 && b.e < 1.0;
    out.M = closed ? interpolate_angle(a.M, b.M, w) : linear(a.M, b.M);
    return out;
}

}  // namespace

TrackPlace locate(const SpacecraftTrack& track, Instant t) {
    const auto& records = track.records;
    const auto after = std::upper_bound(records.begin(), records.end(), t,
                                        [](Instant wanted, const SpacecraftRecord& record) {
                                            return days_between(epoch_of(record), wanted) < 0.0;
                                        });
    if (after == records.begin()) return {};
    TrackPlace place;
    place.record = &*(after - 1);
    if (after != records.end()) {
        place.next = &*after;
        const Instant start = epoch_of(*place.record);
        place.weight = days_between(start, t) / days_between(start, epoch_of(*place.next));
    }
    return place;
}

double interpolate_angle(double a, double b, double w) {
    const double nearest = a + std::remainder(b - a, kTwoPi);
    return (1.0 - w) * a + w * nearest;
}

Elements elements_of(const SpacecraftRecord& record) {
    Elements out{};
    // A parabola knows no semi-major axis.
    const bool ellipse = record.e < 1.0 - kParabolicBand;
    out.q = ellipse ? record.q / (1.0 - record.e) : record.q;
    out.e = record.e;
    out.i = record.i;
    out.node = record.node;
    out.peri = record.peri;
    out.n = record.n;
    out.M = record.M;
    out.epochFraction = record.epoch_fraction;
    out.epochDay = record.epoch_day;
    return out;
}

Elements elements_at(const TrackPlace& place, Instant t) {
    if (place.next == nullptr || place.changes_centre()) return elements_of(*place.record);
    return elements_of(interpolated(*place.record, *place.next, place.weight, t));
}

}  // namespace solsys
