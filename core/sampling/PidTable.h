#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "base/Pid.h"

namespace tolvane {

/// What is known of each pid, for readers that go through a whole process list again and again: looking up pids in
/// ascending order walks the table once, any other order is right as well, and a steady list allocates nothing.
/// `Entry` has a member `pid`.
template <typename Entry>
class PidTable {
public:
    /// The settled entry of the pid; null without one. Valid until the table is added to or settled.
    Entry* find(Pid pid) {
        if (next_ >= settled_ || entries_[next_].pid != pid) next_ = lowerBound(pid);
        if (next_ >= settled_ || entries_[next_].pid != pid) return nullptr;
        return &entries_[next_++];
    }

    /// Not found before `settle`.
    void add(Entry entry) { entries_.push_back(std::move(entry)); }

    /// Takes in what was added; of a repeated pid the last added holds. The next look-up begins at the lowest pid.
    void settle() {
        if (!inOrder()) putInOrder();
        settled_ = entries_.size();
        next_ = 0;
    }

    /// Drops the settled entries that `unwanted` is true for, then settles what was added.
    template <typename Predicate>
    void settleWithout(Predicate unwanted) {
        const auto firstGone = std::remove_if(entries_.begin(), firstAdded(), unwanted);
        const auto kept = static_cast<std::size_t>(firstGone - entries_.begin());
        entries_.erase(firstGone, firstAdded());
        settled_ = kept;
        settle();
    }

    /// Calls `change` with every settled entry; its pid must stay.
    template <typename Function>
    void forEach(Function change) {
        std::for_each(entries_.begin(), firstAdded(), change);
    }

    /// Keeps the memory.
    void clear() {
        entries_.clear();
        settled_ = 0;
        next_ = 0;
    }

    std::size_t size() const { return entries_.size(); }
    void reserve(std::size_t size) { entries_.reserve(size); }

private:
    struct Place {
        Pid pid = 0;
        std::size_t position = 0;
        auto operator<=>(const Place&) const = default;
    };

    auto firstAdded() { return entries_.begin() + static_cast<std::ptrdiff_t>(settled_); }

    std::size_t lowerBound(Pid pid) {
        const auto found = std::ranges::lower_bound(entries_.begin(), firstAdded(), pid, {}, &Entry::pid);
        return static_cast<std::size_t>(found - entries_.begin());
    }

    bool inOrder() const {
        const auto from = entries_.begin() + static_cast<std::ptrdiff_t>(settled_ == 0 ? 0 : settled_ - 1);
        return std::ranges::adjacent_find(from, entries_.end(), std::ranges::greater_equal{}, &Entry::pid) ==
               entries_.end();
    }

    void putInOrder() {
        const auto places = placesInOrder();
        std::vector<Entry> ordered;
        ordered.reserve(entries_.size());
        for (std::size_t index = 0; index < places.size(); ++index) {
            const bool addedAgain = index + 1 < places.size() && places[index + 1].pid == places[index].pid;
            if (!addedAgain) ordered.push_back(std::move(entries_[places[index].position]));
        }
        entries_.swap(ordered);
    }

    /// By pid, then in the order of adding.
    std::vector<Place> placesInOrder() const {
        std::vector<Place> places;
        places.reserve(entries_.size());
        for (const auto& entry : entries_) places.push_back({.pid = entry.pid, .position = places.size()});
        std::ranges::sort(places);
        return places;
    }

    /// Strictly ascending up to `settled_`; behind it what was added.
    std::vector<Entry> entries_;
    std::size_t settled_ = 0;
    /// Where the next ascending look-up will most likely hit.
    std::size_t next_ = 0;
};

}  // namespace tolvane
