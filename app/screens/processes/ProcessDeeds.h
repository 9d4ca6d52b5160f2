#pragma once

#include <QCoroTask>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/acts/Outcome.h"
#include "app/model/AppModel.h"
#include "app/screens/processes/ProcessActions.h"
#include "app/tasks/CancelSource.h"

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
    void carryOut(ProcessAction action, const TableRow& line);
    void forceQuit(const std::vector<TableRow>& lines);

private:
    using WeakTold = std::weak_ptr<Told>;

    void changePriority(ProcessAction action, const TableRow& line);
    static QCoro::Task<> quit(AppModel* model, TableRow line, WeakTold failed, std::stop_token cancellation);
    static QCoro::Task<> relaunch(AppModel* model, TableRow line, WeakTold failed);
    static QCoro::Task<> terminate(AppModel* model, TableRow line, WeakTold failed);
    static QCoro::Task<> lookAfter(AppModel* model, std::vector<TableRow> lines, WeakTold failed,
                                   std::stop_token cancellation);

    AppModel& model_;
    std::shared_ptr<Told> failed_;
    /// Of waits that are this object's and not the model's.
    CancelSource waits_;
};

}  // namespace tolvane
