#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "base/Subscription.h"

namespace tolvane {

/// Subscribers to one kind of news. While one is notified, it may end any subscription, add new ones, or destroy the
/// owner of this object. One thread.
template <typename... News>
class Observers {
public:
    using Told = std::function<void(News...)>;

    [[nodiscard]] Subscription add(Told told) {
        const std::uint64_t number = ++last_;
        list_->emplace(number, std::move(told));
        return Subscription([list = std::weak_ptr(list_), number] {
            if (const auto kept = list.lock()) kept->erase(number);
        });
    }

    bool empty() const { return list_->empty(); }

    void tell(const News&... news) const {
        const auto list = list_;
        std::vector<std::uint64_t> numbers;
        for (const auto& [number, told] : *list) numbers.push_back(number);
        for (const std::uint64_t number : numbers) {
            const auto found = list->find(number);
            if (found == list->end()) continue;
            const Told told = found->second;
            told(news...);
        }
    }

private:
    std::shared_ptr<std::map<std::uint64_t, Told>> list_ = std::make_shared<std::map<std::uint64_t, Told>>();
    std::uint64_t last_ = 0;
};

}  // namespace tolvane
