// Ways of satellites over the sky, with a mark and a time for each minute.
#include <algorithm>

#include "draw/sky_canvas.h"

namespace solsys::draw {
namespace {

constexpr double kSize = 11;

void add_marks(SkyCanvas& canvas, const SkyTrack& track, const std::string& colour) {
    for (const SkyTrack::Point& point : track.points) {
        if (point.label.empty() || point.at.altitude_deg < 0) continue;
        const draw::Point at = SkyCanvas::project(point.at);
        canvas.svg.circle(at, 2.6, Style::filled(colour, point.lit ? 1 : 0.5));
        canvas.labels.occupy(at, 3);
        const double width = text_width(point.label, kSize) + 3;
        const auto place = canvas.labels.beside(at, 3, width, kSize + 1, 0);
        if (!place) continue;
        canvas.svg.text({place->middle.x, place->middle.y + kSize * 0.35}, point.label,
                        {.size = kSize,
                         .fill = colour,
                         .anchor = Anchor::kMiddle,
                         .opacity = point.lit ? 1 : 0.7,
                         .halo = canvas.halo()});
    }
}

}  // namespace

void add_tracks(SkyCanvas& canvas, const SkyPicture& picture) {
    const std::string colour = canvas.daylight     ? "#7a1f1f"
                               : canvas.theme.dark ? "#ff9d5c"
                                                   : "#b3400a";
    for (const SkyTrack& track : picture.tracks) {
        for (std::size_t k = 1; k < track.points.size(); ++k) {
            const SkyTrack::Point &a = track.points[k - 1], &b = track.points[k];
            if (a.at.altitude_deg < 0 || b.at.altitude_deg < 0) continue;
            canvas.svg.line(SkyCanvas::project(a.at), SkyCanvas::project(b.at),
                            a.lit && b.lit ? Style::line(colour, 2.4)
                                           : Style::line(colour, 1.4, 0.5, "3 4"));
        }
        add_marks(canvas, track, colour);
    }
}

}  // namespace solsys::draw
