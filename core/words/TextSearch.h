#pragma once

#include <string>
#include <string_view>

namespace tolvane {

/// Searches texts for another text without regard to case, under a locale's rules: in Turkish and Azerbaijani a dotless
/// i is another letter. Accented letters match however they are composed, and differ from plain ones. Text that is not
/// valid UTF-8 is repaired first. Usable from any thread, one at a time.
class TextSearch {
public:
    TextSearch(std::string_view wanted, std::string_view locale);

    /// Every text contains the empty text.
    bool isIn(std::string_view text) const;

private:
    bool isInPlain(std::string_view text) const;

    bool dotlessI_;
    /// Folded, as is each text before it is searched.
    std::string wanted_;
    bool wantedIsPlain_;
};

}  // namespace tolvane
