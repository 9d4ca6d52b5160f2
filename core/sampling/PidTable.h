#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "base/Pid.h"

namespace tolvane {

/// Entries by pid, for readers that go through a whole process list again and again. Looking up pids in ascending order
/// walks the table once; any other order works too. A steady list allocates nothing. `Entry` has a member `pid`.
template <typename Entry>
class PidTable {
public:
    /// The settled entry of the pid, or null. Valid until the table is added to or settled.
    Entry* find(Pid pid) {
        if (next_ >= settled_ || entries_[next_].pid != pid) next_ = lowerBound(pid);
        if (next_ >= settled_ || entries_[next_].pid != pid) return nullptr;
        return &entries_[next_++];
    }

    /// The entry is found only after `settle`.
    void add(Entry entry) { entries_.push_back(std::move(entry)); }

    /// Makes the added entries findable; of a repeated pid the last one added wins. The next look-up starts at the
    /// lowest pid.
    void settle() {
        if (!inOrder()) putInOrder();
        settled_ = entries_.size();
        next_ = 0;
    }

    /// Drops the settled entries for which `unwanted` is true, then settles the added ones.
    template <typename Predicate>
    void settleWithout(Predicate unwanted) {
        const auto firstGone = std::remove_if(entries_.begin(), firstAdded(), unwanted);
        const auto kept = static_cast<std::size_t>(firstGone - entries_.begin());
        entries_.erase(firstGone, firstAdded());
        settled_ = kept;
        settle();
    }

    /// Calls `change` with every settled entry. It must not change the pid.
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

    /// Sorted by pid without repeats up to `settled_`, followed by the added entries.
    std::vector<Entry> entries_;
    std::size_t settled_ = 0;
    /// Where the next look-up in ascending order most likely hits.
    std::size_t next_ = 0;
};

}  // namespace tolvane
