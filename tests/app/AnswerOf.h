#pragma once

#include <QCoroTask>
#include <memory>
#include <optional>
#include <utility>

namespace tolvane {

/// The result of a task that a test started; empty until the task ends.
template <typename Result>
class AnswerOf {
public:
    explicit AnswerOf(QCoro::Task<Result> task) { static_cast<void>(keep(std::move(task), answer_)); }

    const std::optional<Result>& get() const { return *answer_; }
    bool isThere() const { return answer_->has_value(); }

private:
    using Answer = std::shared_ptr<std::optional<Result>>;

    static QCoro::Task<> keep(QCoro::Task<Result> task, Answer answer) { answer->emplace(co_await std::move(task)); }

    Answer answer_ = std::make_shared<std::optional<Result>>();
};

}  // namespace tolvane
