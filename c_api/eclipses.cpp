// Eclipses, at a site and on the map.
#include <cmath>

#include "c_api/support.h"

using namespace solsys::c;
namespace sky = solsys::sky;

namespace {

solsys_ground_point c_point(const sky::GroundPoint& p) {
    return {p.latitude_deg, p.longitude_deg, c_instant(p.at)};
}

solsys_eclipse record_of(const sky::Eclipse& e) {
    solsys_eclipse r{};
    r.kind = e.kind == sky::EclipseKind::kSolar ? SOLSYS_SOLAR : SOLSYS_LUNAR;
    r.saros = e.saros;
    r.lunation = e.lunation;
    r.central = e.central;
    copy(e.type, r.type);
    r.greatest = c_instant(e.greatest);
    r.begin = c_instant(e.begin);
    r.end = c_instant(e.end);
    r.magnitude = e.magnitude;
    r.gamma = e.gamma;
    r.nearest = c_point(e.nearest);
    r.path_width_km = number(e.path_width_km);
    r.duration_s = number(e.duration_s);
    for (size_t i = 0; i < std::size(r.contacts); ++i) r.contacts[i] = c_instant(e.contacts[i]);
    return r;
}

solsys_eclipse_moment c_moment(const std::optional<sky::EclipseMoment>& m) {
    if (!m) return {c_instant(std::nullopt), NAN, NAN, NAN};
    return {c_instant(m->at), m->altitude_deg, m->azimuth_deg, m->position_angle_deg};
}

sky::EclipseKind kind_of(int32_t kind) {
    if (kind != SOLSYS_SOLAR && kind != SOLSYS_LUNAR)
        refuse(SOLSYS_BAD_ARGUMENT, "kind: 0 solar or 1 lunar");
    return kind == SOLSYS_SOLAR ? sky::EclipseKind::kSolar : sky::EclipseKind::kLunar;
}

}  // namespace

solsys_status solsys_find_eclipses(solsys_model* model, int32_t kind, solsys_instant from,
                                   solsys_instant to, solsys_control* control,
                                   solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        sky::EclipseOptions options;
        if (control != nullptr)
            options.progress = [&](double done) {
                control->control.tell(done);
                return !control->control.stopped();
            };
        hand_out(sky::find_eclipses(given(model, "model").model, kind_of(kind),
                                    span_of(from, to), options),
                 handle);
        refuse_if_stopped(control);
    });
}

solsys_status solsys_get_eclipse(const solsys_list* list, size_t row, solsys_eclipse* out) {
    return call([&] { put(record_of(row_of<sky::Eclipse>(list, row)), out); });
}

solsys_status solsys_local_eclipse_of(solsys_model* model, const solsys_list* eclipses,
                                      size_t row, const solsys_site* from,
                                      solsys_local_eclipse* out) {
    return call([&] {
        const auto local = sky::eclipse_at(given(model, "model").model,
                                           row_of<sky::Eclipse>(eclipses, row), site(from));
        if (!local) refuse(SOLSYS_NOT_COMPUTABLE, "the eclipse passes the site by");
        solsys_local_eclipse r{};
        r.visible = local->visible;
        copy(local->type, r.type);
        r.magnitude = local->magnitude;
        r.obscuration = local->obscuration;
        r.first = c_moment(local->first);
        r.second = c_moment(local->second);
        r.maximum = c_moment(local->maximum);
        r.third = c_moment(local->third);
        r.fourth = c_moment(local->fourth);
        r.rise = c_instant(local->rise);
        r.set = c_instant(local->set);
        put(r, out);
    });
}

solsys_status solsys_eclipse_map(solsys_model* model, const solsys_list* eclipses, size_t row,
                                 solsys_list** curves) {
    return call([&] {
        solsys_list*& handle = way_out(curves);
        hand_out(
            sky::eclipse_map(given(model, "model").model, row_of<sky::Eclipse>(eclipses, row))
                .curves,
            handle);
    });
}

solsys_status solsys_get_map_curve(const solsys_list* curves, size_t row,
                                   solsys_map_curve* out) {
    return call([&] {
        const auto& curve = row_of<sky::MapCurve>(curves, row);
        solsys_map_curve r{};
        r.kind = static_cast<int32_t>(curve.kind);
        copy(sky::to_string(curve.kind), r.kind_text);
        r.value = curve.value;
        r.at = c_instant(curve.at);
        copy(curve.label, r.label);
        r.point_count = curve.points.size();
        put(r, out);
    });
}

solsys_status solsys_get_map_points(const solsys_list* curves, size_t row,
                                    solsys_ground_point* out, size_t capacity) {
    return call([&] {
        const auto& points = row_of<sky::MapCurve>(curves, row).points;
        const size_t count = std::min(points.size(), capacity);
        array(out, count, "out");
        for (size_t i = 0; i < count; ++i) out[i] = c_point(points[i]);
    });
}
