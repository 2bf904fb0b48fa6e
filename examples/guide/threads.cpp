// A model a thread: sunrises of many cities at the same time, and a search that is stopped.
#include <cstdio>
#include <future>
#include <vector>

#include "solsys/sky/conjunctions.h"
#include "solsys/sky/risings.h"
#include "solsys/sky/zone.h"
using namespace solsys::sky;

namespace {

std::string sunrise(const char* city, const Span& span) {
    auto model = Model::open();  // its own: nothing is shared, nothing is locked
    const Risings days = risings(*model, *find_city(city), sun(), span);
    for (const Rising& day : days.rows)
        if (day.rise) return std::string(city) + " " + day.rise->iso(0);
    return std::string(city) + " none";
}

}  // namespace

int main() {
    const Span day{*parse_time("2026-12-01"), *parse_time("2026-12-02")};
    std::vector<std::future<std::string>> answers;
    for (const char* city : {"Lima", "Lagos", "Tromso", "Perth"})
        answers.push_back(std::async(std::launch::async, sunrise, city, day));
    for (auto& answer : answers) std::printf("%s\n", answer.get().c_str());

    // Any thread may stop a search; it answers what it had found till then.
    SearchControl control([&control](double done) {
        if (done > 0.25) control.stop();
    });
    auto model = Model::open();
    const Span century{*parse_time("2000"), *parse_time("2100")};
    const auto found = conjunctions(*model, *find_body("mars"), *find_body("saturn"), century,
                                    ConjunctionWay::kClosest, 10, &control);
    std::printf("stopped: %s, conjunctions till then: %s\n", control.stopped() ? "yes" : "no",
                found.empty() ? "none" : "some");
}
