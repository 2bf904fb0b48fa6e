// Calls functions with arguments that no careful host would pass: each parameter's type draws
// from a pool of edges, NaN, infinities, null pointers and absurd records.
#pragma once

#include <cstdint>
#include <cstring>
#include <ctime>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "solsys/solsys.h"

namespace hostile {

// Seconds of the processor, under sanitizers: what one call may take. An end that is not
// reached is what fails.
constexpr double kLongest = 20.0;

template <class T, class... Others>
constexpr bool kOneOf = (std::is_same_v<T, Others> || ...);
template <class T>
constexpr bool kNumbersAlone =
    kOneOf<T, Elements, tagAster_SPH, tagComet_SPH, tagAster_SPH_5, tagComet_SPH_5,
           AsteroidRecord, CometRecord, SpacecraftRecord, UserObjectRecord, StarObject,
           Tycho2SphRecord, ECLIPSE, SHOWER, CONJUN, BesselElems, TLERecord>;

class Attacker {
  public:
    explicit Attacker(unsigned seed) : random_(seed) {}

    // Whether pointers may be null: members answer false to that, the plain toolkit does not
    // look.
    bool nulls = true;
    // Seconds of the processor: what all calls of a name may take before it is left alone.
    double enough = 0.1;
    // The longest call so far, and whose it was.
    double slowest = 0;
    std::string slowest_name;

    template <class R, class C, class Object, class... Args>
    void operator()(const char* name, R (C::*member)(Args...), Object& object) {
        call(
            name, [&](auto&... a) { (void)(object.*member)(pass<Args>(a)...); },
            std::type_identity<std::tuple<Args...>>{});
    }
    template <class R, class C, class Object, class... Args>
    void operator()(const char* name, R (C::*member)(Args...) const, Object& object) {
        call(
            name, [&](auto&... a) { (void)(object.*member)(pass<Args>(a)...); },
            std::type_identity<std::tuple<Args...>>{});
    }
    template <class R, class... Args>
    void operator()(const char* name, R (*function)(Args...)) {
        call(
            name, [&](auto&... a) { (void)function(pass<Args>(a)...); },
            std::type_identity<std::tuple<Args...>>{});
    }

    // For arguments that depend on one another.
    template <class Function>
    requires std::is_invocable_v<Function>
    void operator()(const char* name, Function&& function) {
        call(
            name, [&] { function(); }, std::type_identity<std::tuple<>>{});
    }

    double number() {
        constexpr double inf = std::numeric_limits<double>::infinity();
        static const double pool[] = {0.0,
                                      -0.0,
                                      1.0,
                                      -1.0,
                                      0.5,
                                      1e-300,
                                      -1e300,
                                      1e300,
                                      inf,
                                      -inf,
                                      std::numeric_limits<double>::quiet_NaN(),
                                      3.2,
                                      6.3,
                                      1e9,
                                      2451545.0,
                                      2451545.5,
                                      2460000.25,
                                      2305814.0,
                                      625000.0,
                                      -1e7,
                                      2147483648.0,
                                      86400.0,
                                      4.9e-324,
                                      1e-9,
                                      1.7e-2};
        return pool[pick(std::size(pool))];
    }
    int integer() {
        static const int pool[] = {0,
                                   1,
                                   -1,
                                   2,
                                   3,
                                   5,
                                   9,
                                   10,
                                   11,
                                   301,
                                   399,
                                   501,
                                   899,
                                   2451545,
                                   2460000,
                                   1000000,
                                   -1000000,
                                   std::numeric_limits<int>::max(),
                                   std::numeric_limits<int>::min()};
        return pool[pick(std::size(pool))];
    }
    SSO_ID id() {
        static const std::int32_t types[] = {SSO_PLNT, SSO_MOON, SSO_ASTR, SSO_COMT, SSO_SCFT,
                                             SSO_STAR, SSO_USCO, SSO_FAST, SSO_FCOM, SSO_FSCO,
                                             SSO_TLE,  0,        -1};
        return {types[pick(std::size(types))], pick(2) == 0 ? pick_small() : integer()};
    }
    OBSERVER observer() {
        OBSERVER o;
        o.kind = static_cast<std::int8_t>(static_cast<int>(pick(9)) - 2);
        const SSO_ID body = id();
        o.body_type = pick(2) == 0 ? static_cast<std::int32_t>(SSO_PLNT) : body.type;
        o.body_number = body.number;
        for (double& x : o.location) x = number();
        return o;
    }
    std::size_t pick(std::size_t n) { return random_() % n; }
    // Whether a round should follow so many others: the first always, more in the time there
    // is.
    [[nodiscard]] bool goes_on(int rounds, int most, double within) const {
        return rounds == 0 || (rounds < most && seconds() - start_ < within);
    }
    static double seconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }
    // Room for two thousand numbers, hostile ones; the next dozen calls leave it alone.
    double* numbers() {
        double* const room = rooms_[next_room_++ % std::size(rooms_)];
        for (int i = 0; i < 4 * kRoom; ++i) room[i] = number();
        return room;
    }

  private:
    static constexpr int kDoubles = 6144;  // more than any operation reads or writes
    static constexpr int kRoom = 500;

    int pick_small() { return static_cast<int>(pick(12)); }

    // What a parameter is made from: pointers and references lead to a value of the call's own.
    template <class T>
    using Held = std::remove_cv_t<std::remove_pointer_t<std::remove_reference_t<T>>>;

    template <class T>
    static constexpr bool kNumbers = std::is_arithmetic_v<Held<T>> &&
                                     (std::is_pointer_v<T> || std::is_reference_v<T>);

    template <class T>
    struct Slot {
        // One value for records, room for many for numbers.
        using Record = std::conditional_t<std::is_object_v<Held<T>>, Held<T>, int>;
        std::conditional_t<kNumbers<T>, std::vector<Record>, std::unique_ptr<Record>> value;
        bool null = false;
    };

    template <class T>
    Slot<T> make() {
        Slot<T> slot;
        if constexpr (std::is_pointer_v<T>) slot.null = nulls && pick(6) == 0;
        if constexpr (kNumbers<T>) {
            slot.value.resize(std::is_same_v<Held<T>, char> ? 256 : kDoubles);
            for (auto& x : slot.value) fill(x);
            if constexpr (std::is_same_v<Held<T>, char>) slot.value.back() = '\0';
        } else if constexpr (std::is_object_v<Held<T>>) {
            slot.value = std::make_unique<Held<T>>();
            fill(*slot.value);
        }
        return slot;
    }

    template <class T>
    static decltype(auto) pass(Slot<T>& slot) {
        if constexpr (std::is_pointer_v<T> && std::is_object_v<Held<T>>) {
            if (slot.null) return static_cast<T>(nullptr);
            if constexpr (std::is_arithmetic_v<Held<T>>) {
                return static_cast<T>(slot.value.data());
            } else {
                return static_cast<T>(slot.value.get());
            }
        } else if constexpr (std::is_pointer_v<T>) {
            return static_cast<T>(nullptr);
        } else if constexpr (std::is_reference_v<T> && std::is_arithmetic_v<Held<T>>) {
            return static_cast<T>(slot.value.front());
        } else if constexpr (std::is_reference_v<T>) {
            return static_cast<T>(*slot.value);
        } else {
            return T(*slot.value);
        }
    }

    void fill(double& x) { x = number(); }
    void fill(float& x) { x = static_cast<float>(number()); }
    void fill(bool& x) { x = pick(2) == 0; }
    void fill(char& x) { x = static_cast<char>(random_()); }
    template <class T>
    requires std::is_integral_v<T>
    void fill(T& x) { x = static_cast<T>(integer()); }
    template <class T>
    requires std::is_enum_v<T>
    void fill(T& x) { x = static_cast<T>(pick(2)); }
    void fill(SSO_ID& x) { x = id(); }
    void fill(OBSERVER& x) { x = observer(); }

  public:
    // Records of numbers alone get absurd bytes, all others stay as they are made.
    template <class T>
    requires std::is_class_v<T>
    void fill(T& x) {
        if constexpr (kNumbersAlone<T>) {
            for (std::size_t at = 0; at + sizeof(double) <= sizeof(T); at += sizeof(double)) {
                const double d = number();
                std::memcpy(reinterpret_cast<unsigned char*>(&x) + at, &d, sizeof d);
            }
        }
    }

  private:
    template <class T>
    void fill(T*& x) {
        x = nullptr;
    }

    template <class Call, class... Args>
    void call(const char* name, Call&& body, std::type_identity<std::tuple<Args...>>) {
        double& spent = spent_[name];
        if (spent > enough) return;
        std::tuple<Slot<Args>...> slots{make<Args>()...};
        const double start = seconds();
        std::apply(body, slots);
        const double took = seconds() - start;
        spent += took;
        if (took > slowest) slowest = took, slowest_name = name;
    }

    std::mt19937 random_;
    double rooms_[12][4 * kRoom] = {};
    std::size_t next_room_ = 0;
    std::map<std::string, double> spent_;
    double start_ = seconds();
};

}  // namespace hostile
