#include "app/model/RuleFileArguments.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "core/rules/RuleFile.h"

namespace tolvane {

namespace {

bool isNamedLikeRules(const std::string& path) { return path.ends_with("." + std::string(RuleFile::fileExtension)); }

bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

}  // namespace

RuleFileArguments RuleFileArguments::among(const std::vector<std::string>& words, const std::string& folder) {
    RuleFileArguments files;
    for (const auto& word : words) {
        auto path = (std::filesystem::path(folder) / word).lexically_normal().string();
        if (!word.empty() && (isNamedLikeRules(word) || exists(path))) {
            files.paths.push_back(std::move(path));
        } else {
            files.others.push_back(word);
        }
    }
    return files;
}

void RuleFileArguments::open(AppModel& model, const std::vector<std::string>& paths,
                             const std::function<bool()>& bringForward) {
    for (const auto& path : paths) model.importRules(path);
    if (!*model.importMessage || bringForward()) return;
    model.notify(noticeTitle, **model.importMessage, std::nullopt);
    model.dismissImportMessage();
}

}  // namespace tolvane
