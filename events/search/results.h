// What a search has found: the list that the host reads afterwards, and the callback that gets
// every record as it comes.
#pragma once

#include <vector>

#include "core/answer_or.h"
#include "events/search/control.h"

namespace solsys::search {

// `Deliver` is the callback's operation that takes over a newly allocated record and answers
// whether to go on.
template <class Record, class Callback, bool (Callback::*Deliver)(Record*)>
class Results {
  public:
    // Null: none. Not owned.
    void set_callback(Callback* callback) { callback_ = callback; }
    void clear() { list_.clear(); }

    // Keeps the record and delivers a copy. When the callback answers false the search is
    // stopped, and the answer is false.
    bool add(const Record& record, Control& control) {
        return add(record, control, [](const Record& r) { return new Record(r); });
    }
    // The same for records that point to more: `copy` allocates what the callback takes over.
    template <class Copy>
    bool add(const Record& record, Control& control, Copy&& copy) {
        list_.push_back(record);
        if (callback_ != nullptr && !(callback_->*Deliver)(copy(record))) control.stop();
        return !control.stopped();
    }

    // Room for the next record to be kept.
    void make_room() { solsys::make_room(list_); }
    // Keeps the first `count` only.
    void cut_back(int count) { list_.resize(static_cast<std::size_t>(count)); }

    [[nodiscard]] const std::vector<Record>& list() const { return list_; }
    [[nodiscard]] int count() const { return static_cast<int>(list_.size()); }

  private:
    std::vector<Record> list_;
    Callback* callback_ = nullptr;
};

}  // namespace solsys::search
