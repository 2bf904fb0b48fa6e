#include "solsys/sky/element_sets.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "core/answer_or.h"
#include "platform/file.h"
#include "sky/text.h"

namespace solsys::sky {
namespace {

constexpr std::int64_t kLargestFile = 1'000'000'000;

Satellite satellite_of(const TLERecord& record) {
    Satellite satellite{record.name, record, std::nullopt};
    if (satellite.name.empty()) satellite.name = std::to_string(record.number);
    return satellite;
}

// Ours: 0 the catalogue number or the whole name, 1 part of the name, 2 neither.
int rank_of(const Satellite& satellite, const std::string& wanted) {
    const std::string name = folded(satellite.name);
    // "00042" is 42.
    const std::string number =
        wanted.substr(std::min(wanted.find_first_not_of('0'), wanted.size()));
    if (name == wanted || std::to_string(satellite.elements.number) == number) return 0;
    return name.find(wanted) != std::string::npos ? 1 : 2;
}

}  // namespace

Instant Satellite::epoch() const {
    return Instant::from_utc({elements.epochDay, elements.epochFraction});
}

double Satellite::period_minutes() const {
    TLEConvert set;
    return set.Set(elements) == 0 ? set.GetPeriod() : 0;
}

SatelliteList parse_satellites(std::string_view text) {
    const MemoryWatch memory;
    std::vector<TLERecord> records;
    std::vector<TLEFault> faults;
    TLEConvert::Read(text.data(), text.size(), &records, &faults);
    memory.check();
    SatelliteList list;
    for (const TLERecord& record : records) list.satellites.push_back(satellite_of(record));
    for (const TLEFault& fault : faults) list.problems.push_back(text_of(fault));
    return list;
}

Result<SatelliteList> read_satellites(const std::string& path) {
    const auto file = ReadFile::open(path);
    if (!file) return Failure{in_quotes(path) + " cannot be opened"};
    if (file->length() > kLargestFile) return Failure{in_quotes(path) + " is too long"};
    std::string text(static_cast<std::size_t>(file->length()), '\0');
    if (!file->read(0, text.data(), text.size()))
        return Failure{in_quotes(path) + " cannot be read"};
    SatelliteList list = parse_satellites(text);
    if (!list.satellites.empty()) return list;
    std::string message = "no element set in " + in_quotes(path);
    if (!list.problems.empty()) message += ": " + list.problems.front();
    return Failure{message};
}

Result<Satellite> find_satellite(const std::vector<Satellite>& list, std::string_view name,
                                 const Instant& near) {
    const std::string wanted = folded(name);
    const Satellite* best = nullptr;
    int best_rank = 2;
    std::set<std::int32_t> numbers;  // of those that have part of the name
    Suggestions suggestions(name);
    for (const Satellite& satellite : list) {
        const int rank = wanted.empty() ? 2 : rank_of(satellite, wanted);
        if (rank == 1) numbers.insert(satellite.elements.number);
        suggestions.consider(satellite.name);
        if (rank == 2 || rank > best_rank) continue;
        const auto away = [&near](const Satellite& s) {
            return std::fabs(days_between(near, s.epoch()));
        };
        if (rank < best_rank || away(satellite) < away(*best)) best = &satellite;
        best_rank = rank;
    }
    if (best_rank == 0 || (best_rank == 1 && numbers.size() == 1)) return *best;
    std::string message = "no satellite " + in_quotes(name);
    if (best_rank == 1)
        message = in_quotes(name) + " is part of " + std::to_string(numbers.size()) +
                  " satellites' names";
    else if (const std::string close = suggestions.text(); !close.empty())
        message += "; " + close;
    return Failure{message};
}

std::string text_of(const TLEFault& fault) {
    std::string text = "line " + std::to_string(fault.line);
    if (fault.column > 0) text += ", column " + std::to_string(fault.column);
    std::string name = TLEFaultName(fault.code);
    std::replace(name.begin(), name.end(), '_', ' ');
    if (fault.code == TLE_FAULT_KEY) name = fault.key;
    return text + ": " + name;
}

}  // namespace solsys::sky
