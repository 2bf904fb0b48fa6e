#include "shared_model.h"

namespace solsys::python {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{50};

// A process has one DE file, which all of its models share; another one would go unread.
void refuse_second_file(const std::string& ephemeris) {
    static std::string opened;  // under the interpreter's lock
    if (ephemeris.empty()) return;
    if (!opened.empty() && opened != ephemeris)
        throw py::value_error("ephemeris: this process reads " + opened +
                              ", and can read one DE file only");
    opened = ephemeris;
}

}  // namespace

Watch::Watch(const py::object& progress)
    : control_([this](double fraction) { tell(done_ + share_ * fraction); }),
      progress_(progress),
      last_(std::chrono::steady_clock::now()) {
    if (!progress.is_none() && PyCallable_Check(progress.ptr()) == 0)
        throw py::type_error("progress: wanted a function");
}

void Watch::part(std::size_t number, std::size_t count) {
    share_ = 1 / static_cast<double>(count);
    done_ = static_cast<double>(number) * share_;
}

bool Watch::tell(double fraction) {
    if (control_.stopped()) return false;
    const auto now = std::chrono::steady_clock::now();
    if (now - last_ >= kBetweenLooks) {
        last_ = now;
        ask_python(fraction);
    }
    return !control_.stopped();
}

void Watch::ask_python(double fraction) {
    const py::gil_scoped_acquire acquired;
    try {
        if (PyErr_CheckSignals() != 0) throw py::error_already_set();
        if (!progress_.is_none()) progress_(fraction);
    } catch (const py::error_already_set& error) {
        raised_ = error;
        control_.stop();
    }
}

void Watch::finish() {
    if (raised_) throw py::error_already_set(*raised_);
}

SharedModel::SharedModel(const std::string& ephemeris, bool modern)
    : model_(value_of(sky::Model::open(ephemeris), "ephemeris")) {
    refuse_second_file(ephemeris);
    model_.classic().UseEphemeris(!ephemeris.empty());
    model_.use(modern ? REDUCTION_MODERN : REDUCTION_CLASSIC);
}

}  // namespace solsys::python
