#include "core/rules/PatternSet.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tolvane {

PatternSet::Number PatternSet::add(std::string pattern) {
    const auto known = std::ranges::find(patterns_, pattern);
    const auto number = static_cast<Number>(known - patterns_.begin());
    if (known == patterns_.end()) patterns_.push_back(std::move(pattern));
    return number;
}

void PatternSet::prepare() {
    found_.assign(patterns_.size(), 0);
    for (Number number = 0; number < patterns_.size(); ++number) {
        if (patterns_[number].size() < sizeof(Head)) {
            short_.push_back(number);
            continue;
        }
        const Head head = headAt(patterns_[number].data());
        begins_.push_back({.head = head, .number = number});
        filter_[hash(head) / 64] |= std::uint64_t{1} << (hash(head) % 64);
    }
    std::ranges::sort(begins_, {}, &Begin::head);
}

PatternSet::Head PatternSet::headAt(const char* text) {
    Head head = 0;
    std::memcpy(&head, text, sizeof head);
    return head;
}

void PatternSet::search(std::string_view text) {
    ++searches_;
    for (const Number number : short_) {
        if (text.find(patterns_[number]) != std::string_view::npos) found_[number] = searches_;
    }
    if (begins_.empty()) return;
    for (std::size_t place = 0; place + sizeof(Head) <= text.size(); ++place) {
        const Head head = headAt(text.data() + place);
        if (mayBegin(hash(head))) tryAt(text.substr(place), head);
    }
}

void PatternSet::tryAt(std::string_view rest, Head head) {
    for (auto begin = std::ranges::lower_bound(begins_, head, {}, &Begin::head);
         begin != begins_.end() && begin->head == head; ++begin) {
        if (!isFound(begin->number) && rest.starts_with(patterns_[begin->number])) found_[begin->number] = searches_;
    }
}

}  // namespace tolvane
