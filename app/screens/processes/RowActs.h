#pragma once

#include <QCoroTask>
#include <functional>
#include <memory>
#include <vector>

#include "app/acts/Acts.h"
#include "app/model/AppModel.h"
#include "app/screens/processes/ProcessActions.h"

namespace tolvane {

/// Acts on rows of the processes table, on those of their processes alone that the rows showed: a process that took
/// over a pid meanwhile is left alone. Returns at once; failures are reported for as long as this object lives.
/// Main thread.
class RowActs {
public:
    using Report = std::function<void(const Outcome&)>;

    /// `model` outlives this object.
    RowActs(AppModel& model, Report failed);

    /// Without asking. Actions that do nothing to processes are passed over.
    void perform(ProcessAction action, const TableRow& row);
    void forceQuit(const std::vector<TableRow>& rows);

private:
    using WeakReport = std::weak_ptr<Report>;

    ActTarget targetOf(const TableRow& row) const;
    static QCoro::Task<> report(QCoro::Task<Outcome> act, WeakReport failed);
    static QCoro::Task<> reportAll(QCoro::Task<std::vector<Outcome>> acts, WeakReport failed);

    AppModel& model_;
    std::shared_ptr<Report> failed_;
};

}  // namespace tolvane
