#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/Question.h"
#include "app/screens/processes/InspectorContent.h"
#include "app/tasks/PortLookup.h"

namespace tolvane {

/// The inspector of one row. Main thread.
class InspectorView {
public:
    /// `model` outlives the view. `locale` is an ICU identifier. `changed` is called when ports arrive.
    InspectorView(AppModel& model, std::string locale, std::function<void()> changed);

    /// Shows the row with its latest values. Reads the ports in the background when it is another row than before.
    void show(TableRow row);
    const std::optional<TableRow>& row() const { return row_; }
    const std::vector<int>& ports() const { return ports_; }
    /// Content for the shown row. Call `show` first.
    InspectorContent content() const;

    /// The force quit question is open.
    bool confirmForceQuit = false;
    Question forceQuitQuestion() const;

private:
    void readPorts();

    AppModel& model_;
    std::string locale_;
    std::string home_;
    std::function<void()> changed_;
    std::optional<TableRow> row_;
    std::vector<int> ports_;
    PortLookup reader_;
};

}  // namespace tolvane
