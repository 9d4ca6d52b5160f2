#pragma once

#include <tuple>

#include "core/json/Fields.h"
#include "core/projects/ParkedProject.h"

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
