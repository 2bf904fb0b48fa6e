// Bodies, lists, models and controls: what has a handle.
#include "c_api/support.h"

using namespace solsys::c;
namespace sky = solsys::sky;

size_t solsys_list_count(const solsys_list* list) {
    if (list == nullptr) return 0;
    return std::visit([](const auto& rows) { return rows.size(); }, list->rows);
}

void solsys_list_free(solsys_list* list) { delete list; }

solsys_status solsys_find_body(const char* name, const solsys_instant* near,
                               solsys_body** out) {
    return call([&] {
        solsys_body*& handle = way_out(out);
        handle =
            new solsys_body{value_of(sky::find_body(text(name, "name"), near_instant(near)))};
    });
}

solsys_status solsys_find_bodies(const char* name, const solsys_instant* near,
                                 solsys_list** out) {
    return call([&] {
        solsys_list*& handle = way_out(out);
        hand_out(value_of(sky::find_bodies(text(name, "name"), near_instant(near))), handle);
    });
}

solsys_status solsys_get_body(const solsys_list* list, size_t row, solsys_body** out) {
    return call([&] {
        solsys_body*& handle = way_out(out);
        handle = new solsys_body{row_of<sky::Body>(list, row)};
    });
}

solsys_status solsys_body_from_elements(const char* elements, solsys_body** out) {
    return call([&] {
        solsys_body*& handle = way_out(out);
        handle = new solsys_body{value_of(
            sky::parse_elements(std::string(text(elements, "text"))), SOLSYS_BAD_ARGUMENT)};
    });
}

solsys_status solsys_body_from_file(const char* path, const char* object,
                                    const solsys_instant* near, solsys_body** out) {
    return call([&] {
        solsys_body*& handle = way_out(out);
        handle = new solsys_body{
            value_of(sky::find_in_file(std::string(text(path, "path")),
                                       object != nullptr ? object : "", near_instant(near)))};
    });
}

void solsys_body_free(solsys_body* body) { delete body; }

solsys_status solsys_body_name(const solsys_body* body, char* buffer, size_t size) {
    return call([&] { write(given(body, "body").body.name, buffer, size); });
}

solsys_status solsys_body_code(const solsys_body* body, char* buffer, size_t size) {
    return call([&] { write(sky::code_of(given(body, "body").body.id), buffer, size); });
}

solsys_status solsys_model_open(const char* ephemeris, solsys_model** out) {
    return call([&] {
        solsys_model*& handle = way_out(out);
        handle =
            new solsys_model{value_of(sky::Model::open(ephemeris != nullptr ? ephemeris : ""))};
    });
}

void solsys_model_free(solsys_model* model) { delete model; }

solsys_status solsys_model_set_reduction(solsys_model* model, int32_t reduction) {
    return call([&] {
        CSWSolSys& classic = given(model, "model").model.classic();
        if (reduction != SOLSYS_CLASSIC && reduction != SOLSYS_MODERN)
            refuse(SOLSYS_BAD_ARGUMENT, "reduction: 0 classic or 1 modern");
        classic.SetReduction(reduction == SOLSYS_MODERN ? REDUCTION_MODERN : REDUCTION_CLASSIC);
    });
}

solsys_status solsys_model_set_earth(solsys_model* model, double ut1_minus_utc, double pole_x,
                                     double pole_y) {
    return call([&] {
        CSWSolSys& classic = given(model, "model").model.classic();
        if (!classic.SetUT1(ut1_minus_utc))
            refuse(SOLSYS_BAD_ARGUMENT, "ut1_minus_utc: beyond 1 s");
        if (!classic.SetPolarMotion(pole_x, pole_y))
            refuse(SOLSYS_BAD_ARGUMENT, "pole_x, pole_y: beyond 2 arcsec");
    });
}

solsys_status solsys_model_observe_from(solsys_model* model, const solsys_site* from) {
    return call([&] {
        sky::Model& m = given(model, "model").model;
        if (from == nullptr) return m.observe_from_earth_centre();
        m.observe_from(site(from));
    });
}

solsys_status solsys_model_move_to(solsys_model* model, solsys_instant t) {
    return call([&] {
        sky::Model& m = given(model, "model").model;
        if (!m.move_to(instant(t)))
            refuse(SOLSYS_NOT_COMPUTABLE, "the instant is out of range");
    });
}

solsys_status solsys_model_source(const solsys_model* model, char* buffer, size_t size) {
    return call([&] { write(given(model, "model").model.source(), buffer, size); });
}

solsys_status solsys_control_new(void (*progress)(double done, void* context), void* context,
                                 solsys_control** out) {
    return call([&] {
        solsys_control*& handle = way_out(out);
        handle = progress == nullptr ? new solsys_control{sky::SearchControl()}
                                     : new solsys_control{sky::SearchControl(
                                           [=](double done) { progress(done, context); })};
    });
}

void solsys_control_stop(solsys_control* control) {
    if (control != nullptr) control->control.stop();
}

void solsys_control_free(solsys_control* control) { delete control; }
