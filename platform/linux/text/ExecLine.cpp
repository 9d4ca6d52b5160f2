#include "platform/linux/text/ExecLine.h"

#include "platform/linux/text/GLibOwned.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::string_view filePlaces = "fFuU";

/// A whole word such as "%F".
bool isPlaceholder(std::string_view word) { return word.size() == 2 && word.front() == '%' && word.back() != '%'; }

class Expansion {
public:
    explicit Expansion(const ExecFacts& facts) : facts_(facts) {}

    void add(std::string_view word) {
        if (isPlaceholder(word)) return addPlaceholder(word.back());
        words_.push_back(inside(word));
    }

    std::vector<std::string> finish() {
        if (!hasFilePlace_ && !words_.empty() && !facts_.files.empty()) words_.push_back(facts_.files.front());
        return std::move(words_);
    }

private:
    void addPlaceholder(char code) {
        hasFilePlace_ = hasFilePlace_ || filePlaces.find(code) != std::string_view::npos;
        if (code == 'F' || code == 'U') {
            for (const std::string& file : facts_.files) words_.push_back(code == 'U' ? fileAddress(file) : file);
        } else if (code == 'i' && !facts_.icon.empty()) {
            words_.emplace_back("--icon");
            words_.push_back(facts_.icon);
        } else if (auto text = single(code); !text.empty()) {
            words_.push_back(std::move(text));
        }
    }

    std::string single(char code) const {
        std::string first = facts_.files.empty() ? std::string() : facts_.files.front();
        switch (code) {
            case '%':
                return "%";
            case 'c':
                return facts_.name;
            case 'k':
                return facts_.entryPath;
            case 'f':
                return first;
            case 'u':
                return first.empty() ? first : fileAddress(first);
            default:
                return {};
        }
    }

    /// Expands placeholders inside a word, where those for lists are not allowed.
    std::string inside(std::string_view word) {
        std::string text;
        for (std::size_t at = 0; at < word.size(); ++at) {
            if (word[at] != '%' || at + 1 == word.size()) {
                text += word[at];
                continue;
            }
            const char code = word[++at];
            hasFilePlace_ = hasFilePlace_ || filePlaces.find(code) != std::string_view::npos;
            text += single(code);
        }
        return text;
    }

    const ExecFacts& facts_;
    std::vector<std::string> words_;
    bool hasFilePlace_ = false;
};

}  // namespace

std::vector<std::string> commandOfExec(const std::string& exec, const ExecFacts& facts) {
    char** list = nullptr;
    if (exec.empty() || g_shell_parse_argv(exec.c_str(), nullptr, &list, nullptr) == FALSE) return {};
    const GLibOwned<char*> owner(list);
    Expansion expansion(facts);
    for (char** word = list; *word != nullptr; ++word) expansion.add(*word);
    return expansion.finish();
}

std::string fileAddress(const std::string& path) { return textOf(g_filename_to_uri(path.c_str(), nullptr, nullptr)); }

}  // namespace tolvane::linuxhost
