#include "solsys/sky/model.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include "sky/text.h"
#include "solsys/de_ephemeris.h"

namespace solsys::sky {
namespace {

namespace fs = std::filesystem;

fs::path path_of(const std::string& utf8) {
    return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

bool is_de_file(const std::string& path) {
    return DE_Ephemeris::readHeader(path.c_str()) != nullptr;
}

// A DE file, or a folder that holds one.
bool holds_ephemeris(const std::string& path) {
    std::error_code error;
    if (!fs::is_directory(path_of(path), error)) return is_de_file(path);
    for (const fs::directory_entry& entry : fs::directory_iterator(path_of(path), error)) {
        const std::u8string name = entry.path().u8string();
        if (entry.is_regular_file(error) && is_de_file({name.begin(), name.end()})) return true;
    }
    return false;
}

}  // namespace

Result<Model> Model::open(const std::string& ephemeris) {
    std::error_code error;
    if (!ephemeris.empty() && !fs::exists(path_of(ephemeris), error))
        return Failure{in_quotes(ephemeris) + " does not exist"};
    if (!ephemeris.empty() && !holds_ephemeris(ephemeris))
        return Failure{in_quotes(ephemeris) +
                       " is no DE ephemeris file, nor a folder with one"};
    auto own = std::make_unique<CSWSolSys>();
    if (!own->InitSys(ephemeris.c_str()))
        return Failure{"the model cannot be initialised: out of memory"};
    if (!ephemeris.empty() && !own->HasEphemeris())
        return Failure{in_quotes(ephemeris) + " cannot be mapped into memory"};
    own->SetReduction(REDUCTION_MODERN);
    Model model(*own);
    model.own_ = std::move(own);
    model.observe_from_earth_centre();
    model.move_to(Instant());
    return model;
}

Model::Model(CSWSolSys& borrowed) : model_(&borrowed) {
    int day = 0;
    double fraction = 0;
    borrowed.GetTime(&day, &fraction);
    instant_ = Instant::from_tt(JulianDate{day, fraction});
}

Model::Model(Model&&) noexcept = default;
Model& Model::operator=(Model&&) noexcept = default;
Model::~Model() = default;

void Model::observe_from(const Site& site) {
    const OBSERVER observer = site.observer();
    model_->SetObserver(&observer);
    site_ = site;
}

void Model::observe_from_earth_centre() {
    const OBSERVER observer = earth_centre();
    model_->SetObserver(&observer);
    site_.reset();
}

bool Model::move_to(const Instant& t) {
    const JulianDate tt = t.tt();
    model_->UpdateSys(tt.day, tt.fraction);
    int day = 0;
    double fraction = 0;
    model_->GetTime(&day, &fraction);
    const bool moved = std::abs((day - tt.day) + (fraction - tt.fraction)) < 1e-7;
    if (moved) instant_ = t;
    return moved;
}

Result<bool> Model::add(const Body& body) {
    bool added = true;
    if (const auto* star = std::get_if<StarObject>(&body.record)) {
        added = model_->AddStar(body.id, *star);
    } else if (const auto* asteroid = std::get_if<AsteroidRecord>(&body.record)) {
        added = model_->AddAsteroid(body.id.number, *asteroid);
    } else if (const auto* comet = std::get_if<CometRecord>(&body.record)) {
        added = model_->AddComet(body.id.number, *comet);
    } else if (!model_->CheckSSO(&body.id)) {
        return Failure{"no body " + in_quotes(code_of(body.id)) + " in the catalogue"};
    }
    if (!added) return Failure{body.name + ": the elements are no orbit"};
    return true;
}

std::string Model::source() const {
    if (!model_->HasEphemeris()) return "built-in theory";
    return "DE file";
}

}  // namespace solsys::sky
