#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "base/Date.h"
#include "core/json/Fields.h"

namespace tolvane {

/// What it takes to start a stopped process again. The environment is secret: never print or log it.
struct ParkedCommand {
    std::string executable;
    /// Includes the zeroth argument.
    std::vector<std::string> args;
    /// NAME=value entries in the process's own order.
    std::vector<std::string> env;
    std::string cwd;

    bool operator==(const ParkedCommand&) const = default;
};

/// A project that was stopped and can be started again.
struct ParkedProject {
    std::string root;
    Date date;
    std::vector<ParkedCommand> commands;
    /// Ids of the containers that ran for it.
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
