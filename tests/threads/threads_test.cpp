// What threads may do beside each other. Meant for ThreadSanitizer, and short enough for every
// run of the tests.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <functional>
#include <thread>
#include <vector>

#include "solsys/solar_system.h"
#include "tests/support/de_file_writer.h"
#include "tests/support/shared_de_file.h"

namespace {

constexpr double kAuKm = 149597870.691;

// The same work on several threads, each with a number of its own.
void on_threads(int count, const std::function<void(int)>& work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) threads.emplace_back(work, i);
    for (std::thread& thread : threads) thread.join();
}

class Threads : public SharedDeFile {
  protected:
    // A file whose Sun stands still at x [km].
    std::string file_with(const char* name, double x) {
        de_file::Layout layout;
        layout.coefficient = [x](int body, int, int, int axis, int degree) {
            return body == 11 && axis == 0 && degree == 0 ? x : 0.0;
        };
        return folder_.write(name, de_file::bytes(layout));
    }
};

// Evaluations beside replacements see one file or the other, never a mixture nor a mapping that
// is gone; the thread that is slow to begin holds the old file meanwhile.
TEST_F(Threads, EvaluateWhileTheFileIsReplaced) {
    const std::string files[] = {file_with("first", 1e6), file_with("second", 3e6)};
    ASSERT_TRUE(DE_Ephemeris::open(files[0].c_str()));
    std::atomic<bool> stop{false};
    std::atomic<int> seen[3] = {};  // the first, the second, neither
    on_threads(7, [&](int number) {
        if (number == 0) {
            for (int n = 1; n <= 5; ++n) {
                EXPECT_TRUE(DE_Ephemeris::replaceEphemeris(files[n % 2].c_str()));
                // Who waits looks again after 0.05 s.
                std::this_thread::sleep_for(std::chrono::milliseconds(80));
            }
            stop = true;
            return;
        }
        DE_EvalState state;
        while (!stop) {
            double out[3] = {-1, 0, 0};
            DE_Ephemeris::getState(state, 2451545, number / 8.0, 11, 0, out);
            const double x = out[0] * kAuKm;
            ++seen[std::fabs(x - 1e6) < 1e-6 ? 0 : std::fabs(x - 3e6) < 1e-6 ? 1 : 2];
            std::this_thread::yield();
        }
    });
    EXPECT_TRUE(seen[0] > 0 && seen[1] > 0 && seen[2] == 0) << seen[2];
}

// A file may be opened while others already ask: they are told that there is none, or served.
TEST_F(Threads, OpenBesideEvaluations) {
    const std::string file = file_with("file", 2e6);
    std::atomic<int> wrong{0};
    on_threads(4, [&](int number) {
        if (number == 0) {
            EXPECT_TRUE(DE_Ephemeris::open(file.c_str()));
            return;
        }
        DE_EvalState state;
        for (int i = 0; i < 20000; ++i) {
            double out[3];
            if (DE_Ephemeris::getState(state, 2451545, i % 7 / 8.0, 11, 0, out) == 0 &&
                std::fabs(out[0] * kAuKm - 2e6) > 1e-6)
                ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
}

// Models of their own on threads of their own answer what one alone answers.
TEST_F(Threads, ComputeWithModelsOfTheirOwn) {
    const auto places = [](int first_day) {
        std::vector<double> all;
        CSWSolSys model;
        model.InitSys("");
        for (int day = 0; day < 4; ++day) {
            model.UpdateSys(first_day + day, 0.3);
            for (const SSO_ID& id : {SSO_ID(SSO_PLNT, 10), SSO_ID(SSO_PLNT, 5),
                                     SSO_ID(SSO_MOON, 301), SSO_ID(SSO_MOON, 606)}) {
                double place[3] = {};
                model.GetRADecVis(id, place, 0.0);
                all.insert(all.end(), place, place + 3);
            }
        }
        return all;
    };
    const std::vector<double> alone = places(2461000);
    std::atomic<int> wrong{0};
    on_threads(4, [&](int number) {
        if (number % 2 == 1) places(2440000 + number);  // others compute other instants
        if (places(2461000) != alone) ++wrong;
    });
    EXPECT_EQ(wrong, 0);
}

}  // namespace
