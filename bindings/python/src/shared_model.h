// A model that Python's threads take turns with, and searches that Ctrl-C stops.
#pragma once

#include <atomic>
#include <chrono>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "bindings.h"

namespace solsys::python {

// Hands a search's progress to Python, and to the search what Python answers: a pending signal
// or an exception of the progress function ends it.
class Watch {
  public:
    // `progress` is called with a fraction from 0 to 1, or None.
    explicit Watch(const py::object& progress);

    sky::SearchControl* control() { return &control_; }
    // What the control is told from now on is of one of several equal parts.
    void part(std::size_t number, std::size_t count);
    // False once the search is to end. Looks at Python at most every twentieth of a second.
    bool tell(double fraction);
    // With the interpreter's lock: raises what ended the search.
    void finish();

  private:
    void ask_python(double fraction);

    sky::SearchControl control_;
    const py::object& progress_;
    double done_ = 0, share_ = 1;  // before this part, and of it
    std::chrono::steady_clock::time_point last_;
    std::optional<py::error_already_set> raised_;
};

class SharedModel {
  public:
    SharedModel(const std::string& ephemeris, bool modern);

    // Runs `use(model)` as seen from a site, or from the Earth's centre, with the interpreter's
    // lock released and other threads kept out.
    template <class Use>
    auto ask(const std::optional<sky::Site>& site, Use&& use) {
        if (owner_.load() == std::this_thread::get_id())
            throw std::runtime_error("model: in use by the very search that is asking");
        const py::gil_scoped_release released;
        const std::lock_guard<std::mutex> turn(mutex_);
        const Owner owner(owner_);
        if (site) {
            model_.observe_from(*site);
        } else {
            model_.observe_from_earth_centre();
        }
        return use(model_);
    }
    // The same for a search: `use(model, watch)`.
    template <class Use>
    auto search(const std::optional<sky::Site>& site, const py::object& progress, Use&& use) {
        Watch watch(progress);
        auto found = ask(site, [&](sky::Model& model) { return use(model, watch); });
        watch.finish();
        return found;
    }

  private:
    class Owner {
      public:
        explicit Owner(std::atomic<std::thread::id>& id) : id_(id) {
            id_ = std::this_thread::get_id();
        }
        ~Owner() { id_ = std::thread::id(); }
        Owner(const Owner&) = delete;
        Owner& operator=(const Owner&) = delete;

      private:
        std::atomic<std::thread::id>& id_;
    };

    sky::Model model_;
    std::mutex mutex_;
    std::atomic<std::thread::id> owner_{};
};

}  // namespace solsys::python
