/* Where the Moon and two planets stand over a city, when the Sun rises there, and the eclipses
 * of the next years.
 *
 *   cc -std=c99 places.c $(pkg-config --cflags --libs solsys) -o places
 *   ./places Oslo 2026-11-21
 */
#include <stdio.h>
#include <stdlib.h>

#include "solsys/c_api.h"

enum { NIGHTS = 5, BODIES = 3, DAYS = 2000 };

static void check(solsys_status status) {
    if (status == SOLSYS_OK) return;
    fprintf(stderr, "places: %s\n", solsys_last_message());
    exit(2);
}

static void print_time(const char* label, solsys_instant t, const char* zone) {
    char text[40] = "-";
    if (t.fraction == t.fraction) check(solsys_time_text(t, zone, 0, text, sizeof text));
    printf("%s %s", label, text);
}

/* Two bodies and the Moon at the same hour of a few nights, in one call. */
static void print_places(solsys_model* model, const solsys_site* site, solsys_instant from) {
    static const char* const names[BODIES] = {"moon", "mars", "jupiter"};
    solsys_body* bodies[BODIES];
    solsys_instant nights[NIGHTS];
    solsys_horizontal out[BODIES * NIGHTS];
    size_t done = 0;
    int i, b;
    for (b = 0; b < BODIES; ++b) check(solsys_find_body(names[b], NULL, &bodies[b]));
    for (i = 0; i < NIGHTS; ++i)
        check(solsys_instant_from_utc(from.day + i, from.fraction, &nights[i]));
    check(solsys_horizontals(model, site, 1, (const solsys_body* const*)bodies, BODIES, nights,
                             NIGHTS, out, BODIES * NIGHTS, &done, NULL));
    for (b = 0; b < BODIES; ++b)
        for (i = 0; i < NIGHTS; ++i) {
            print_time(names[b], nights[i], site->zone);
            printf("  azimuth %6.2f  altitude %6.2f\n", out[b * NIGHTS + i].azimuth_deg,
                   out[b * NIGHTS + i].altitude_deg);
        }
    for (b = 0; b < BODIES; ++b) solsys_body_free(bodies[b]);
    printf("%u places\n", (unsigned)done);
}

static void print_risings(solsys_model* model, const solsys_site* site, solsys_instant from,
                          solsys_instant to) {
    solsys_body* sun = NULL;
    solsys_list* days = NULL;
    size_t i;
    check(solsys_find_body("sun", NULL, &sun));
    check(solsys_risings(model, site, sun, from, to, &days, NULL));
    for (i = 0; i < solsys_list_count(days); ++i) {
        solsys_rising day = {.size = sizeof day};
        check(solsys_get_rising(days, i, &day));
        print_time("sunrise", day.rise, site->zone);
        print_time("  sunset", day.set, site->zone);
        printf("\n");
    }
    solsys_list_free(days);
    solsys_body_free(sun);
}

static void print_eclipses(solsys_model* model, const solsys_site* site, solsys_instant from,
                           solsys_instant to) {
    solsys_list* eclipses = NULL;
    size_t i;
    check(solsys_find_eclipses(model, SOLSYS_SOLAR, from, to, NULL, &eclipses));
    for (i = 0; i < solsys_list_count(eclipses); ++i) {
        solsys_eclipse eclipse = {.size = sizeof eclipse};
        solsys_local_eclipse here = {.size = sizeof here};
        check(solsys_get_eclipse(eclipses, i, &eclipse));
        print_time(eclipse.type, eclipse.greatest, NULL);
        printf("  saros %d", (int)eclipse.saros);
        if (solsys_local_eclipse_of(model, eclipses, i, site, &here) == SOLSYS_OK &&
            here.visible)
            printf("  here: %s, magnitude %.3f", here.type, here.magnitude);
        printf("\n");
    }
    solsys_list_free(eclipses);
}

int main(int argc, char** argv) {
    solsys_site site = {.size = sizeof site};
    solsys_model* model = NULL;
    solsys_instant from, to, later;
    if (solsys_c_api_version() < SOLSYS_C_API_VERSION) {
        fprintf(stderr, "places: the library is older than its header\n");
        return 2;
    }
    check(solsys_find_city(argc > 1 ? argv[1] : "Oslo", &site));
    check(solsys_parse_time(argc > 2 ? argv[2] : "now", site.zone, &from));
    check(solsys_instant_from_utc(from.day + NIGHTS, from.fraction, &to));
    check(solsys_instant_from_utc(from.day + DAYS, from.fraction, &later));
    check(solsys_model_open(argc > 3 ? argv[3] : NULL, &model));
    printf("%s, %.2f %.2f, library %s\n", site.name, site.latitude_deg, site.longitude_deg,
           solsys_library_version());
    print_places(model, &site, from);
    print_risings(model, &site, from, to);
    print_eclipses(model, &site, from, later);
    solsys_model_free(model);
    return 0;
}
