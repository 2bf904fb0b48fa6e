// The header of a DE file, read with the suspicion that foreign bytes deserve.
#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

#include "core/answer_or.h"
#include "core/constants.h"
#include "ephemeris/de/open_file.h"
#include "platform/file.h"

namespace solsys {
namespace {

static_assert(std::endian::native == std::endian::little, "DE files are read as they lie");

// Layout [bytes from the start of the file]. Between the titles and the dates stand 400 names
// of constants; further names, from byte 2856 on, push the last two pointer triples back.
constexpr std::size_t kTitleSize = 252;
constexpr std::int64_t kDates = 2652;
constexpr std::int32_t kNamesInPlace = 400;
constexpr std::int64_t kNameSize = 6;

constexpr double kAuTolerance = 0.1;      // km; every DE differs by less
constexpr double kLeastSpan = 1e-3;       // day; those in use are of 8 days at least
constexpr int kEvaluatedRows = 11;        // Mercury to the Sun
constexpr std::int32_t kMaxTerms = 20;    // room for polynomials in DE_EvalState
constexpr std::int32_t kRecordDates = 2;  // doubles before the first coefficient

// Takes values off consecutive bytes of a file; after the first that is not wholly there, all
// fail.
class FieldReader {
  public:
    FieldReader(const ReadFile& file, std::int64_t offset) : file_(file), offset_(offset) {}

    template <class T>
    void take(T& value) {
        ok_ = ok_ && file_.read(offset_, &value, sizeof value);
        offset_ += static_cast<std::int64_t>(sizeof value);
    }
    void skip(std::int64_t bytes) { offset_ += bytes; }
    [[nodiscard]] bool ok() const { return ok_; }

  private:
    const ReadFile& file_;
    std::int64_t offset_;
    bool ok_ = true;
};

// The number after the next "JED=", which is then taken off the text. What is not a number
// counts as 0.
std::optional<double> take_epoch(std::string_view& text) {
    constexpr std::string_view kMark = "JED=";
    const std::size_t mark = text.find(kMark);
    if (mark == std::string_view::npos) return std::nullopt;
    text.remove_prefix(mark + kMark.size());
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// Whether the titles are text and their epochs enclose the dates.
bool titles_agree(const ReadFile& file, const DEHeader& header) {
    std::array<char, kTitleSize> title{};
    if (!file.read(0, title.data(), title.size())) return false;
    const auto printable = [](char c) { return static_cast<unsigned char>(c) >= ' '; };
    if (!std::all_of(title.begin(), title.end(), printable)) return false;

    std::string_view text(title.data(), title.size());
    const auto first = take_epoch(text);
    const auto last = take_epoch(text);
    return first && last && header.start_jd >= *first && header.end_jd <= *last;
}

bool read_fields(const ReadFile& file, DEHeader& header) {
    FieldReader in(file, kDates);
    in.take(header.start_jd);
    in.take(header.end_jd);
    in.take(header.span);
    in.take(header.ncon);
    in.take(header.au_km);
    in.take(header.emrat);
    in.take(header.pointers);
    in.take(header.de_number);
    in.take(header.libration_pointers);
    if (!in.ok() || header.ncon < 0) return false;
    in.skip(std::max<std::int64_t>(0, header.ncon - kNamesInPlace) * kNameSize);
    in.take(header.mantle_pointers);
    in.take(header.tt_tdb_pointers);
    return in.ok();
}

// Divisors and dates. Comparisons are put so that a NaN fails them.
bool numbers_usable(const DEHeader& header) {
    return std::isfinite(header.start_jd) && std::isfinite(header.end_jd) &&
           std::isfinite(header.span) && header.span >= kLeastSpan &&
           header.end_jd > header.start_jd && std::fabs(header.au_km - kAuKm) <= kAuTolerance &&
           std::isfinite(header.emrat) && header.emrat > 0;
}

// Doubles per record, from the length of the file: two header records and one per whole span.
// Empty if they do not divide the file evenly.
std::optional<std::int32_t> doubles_per_record(const DEHeader& header, std::int64_t length) {
    const double spans = (header.end_jd - header.start_jd) / header.span;
    // More records than bytes is nonsense; it would also not fit an integer.
    if (!(spans >= 1) || spans > static_cast<double>(length)) return std::nullopt;
    const std::int64_t records = data_records(header) + 2;
    const std::int64_t unit = records * static_cast<std::int64_t>(sizeof(double));
    if (length % unit != 0 || length / unit > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return static_cast<std::int32_t>(length / unit);
}

// Whether the coefficients of every body lie within a record. The rows for nutations and
// librations are not evaluated, and some files leave them blank.
bool pointers_inside(const DEHeader& header) {
    return std::all_of(header.pointers, header.pointers + kEvaluatedRows, [&](const auto& row) {
        const std::int64_t offset = row[0], terms = row[1], subs = row[2];
        return offset > kRecordDates && terms >= 2 && terms <= kMaxTerms && subs >= 1 &&
               offset - 1 + 3 * terms * subs <= header.ncoeff;
    });
}

}  // namespace
}  // namespace solsys

std::unique_ptr<DEHeader> DE_Ephemeris::readHeader(const char* path) {
    using namespace solsys;
    using Header = std::unique_ptr<DEHeader>;
    return answer_or(Header(), [path]() -> Header {
        const auto file = ReadFile::open(path != nullptr ? path : "");
        if (!file) return nullptr;

        auto header = std::make_unique<DEHeader>();
        if (!read_fields(*file, *header) || !numbers_usable(*header) ||
            !titles_agree(*file, *header))
            return nullptr;
        const auto ncoeff = doubles_per_record(*header, file->length());
        if (!ncoeff) return nullptr;
        header->ncoeff = *ncoeff;
        return pointers_inside(*header) ? std::move(header) : nullptr;
    });
}
