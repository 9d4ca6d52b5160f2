#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "base/Date.h"
#include "core/json/Fields.h"

namespace tolvane {

/// A process as it was, to be started again. The environment is secret: it is never printed or logged.
struct ParkedCommand {
    std::string executable;
    /// With its zeroth element.
    std::vector<std::string> args;
    /// Entries NAME=value in the process's own order.
    std::vector<std::string> env;
    std::string cwd;

    bool operator==(const ParkedCommand&) const = default;
};

/// A project that was stopped to be started again.
struct ParkedProject {
    std::string root;
    Date date;
    std::vector<ParkedCommand> commands;
    /// Ids of the containers that were running for it.
    std::vector<std::string> containers;

    bool operator==(const ParkedProject&) const = default;
};

}  // namespace tolvane

namespace tolvane::json {

template <>
struct Fields<ParkedCommand> {
    static constexpr auto fields =
        std::tuple(Field{"executable", &ParkedCommand::executable}, Field{"args", &ParkedCommand::args},
                   Field{"env", &ParkedCommand::env}, Field{"cwd", &ParkedCommand::cwd});
};

template <>
struct Fields<ParkedProject> {
    static constexpr auto fields =
        std::tuple(Field{"root", &ParkedProject::root}, Field{"date", &ParkedProject::date},
                   Field{"commands", &ParkedProject::commands}, Field{"containers", &ParkedProject::containers});
};

}  // namespace tolvane::json
