#pragma once

#include <QCoroTask>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/AppModel.h"
#include "app/CancelSource.h"
#include "app/Outcome.h"
#include "app/screens/ProcessActions.h"

namespace tolvane {

/// Carries out what a user wants done to lines, on those processes alone that the lines showed: one that took over a
/// number meanwhile is left alone. Nothing waits; what does not come off is told, as long as this object lives.
/// Main thread.
class ProcessDeeds {
public:
    using Told = std::function<void(const Outcome&)>;

    /// `model` outlives this object.
    ProcessDeeds(AppModel& model, Told failed);

    /// Without asking. Actions that are no acts on processes are passed over.
    void carryOut(ProcessAction action, const Line& line);
    void forceQuit(const std::vector<Line>& lines);

    /// "Could not stop node. Still running."
    static std::string sentenceOf(const Outcome& outcome);

private:
    using WeakTold = std::weak_ptr<Told>;

    void changePriority(ProcessAction action, const Line& line);
    static QCoro::Task<> quit(AppModel* model, Line line, WeakTold failed, std::stop_token cancellation);
    static QCoro::Task<> relaunch(AppModel* model, Line line, WeakTold failed);
    static QCoro::Task<> terminate(AppModel* model, Line line, WeakTold failed);
    static QCoro::Task<> lookAfter(AppModel* model, std::vector<Line> lines, WeakTold failed,
                                   std::stop_token cancellation);

    AppModel& model_;
    std::shared_ptr<Told> failed_;
    /// Of waits that are this object's and not the model's.
    CancelSource waits_;
};

}  // namespace tolvane
