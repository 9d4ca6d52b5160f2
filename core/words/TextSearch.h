#pragma once

#include <string>
#include <string_view>

namespace tolvane {

/// Looks for one text within others without regard to case, under a locale's rules: in Turkish and Azerbaijani a
/// dotless i is another letter. Accented letters are found however they are composed, and differ from plain ones.
/// UTF-8; what is not is repaired first. Usable from any thread, one at a time.
class TextSearch {
public:
    TextSearch(std::string_view wanted, std::string_view locale);

    /// The empty text is in every other.
    bool isIn(std::string_view text) const;

private:
    bool isInPlain(std::string_view text) const;

    bool dotlessI_;
    /// Folded, and so is each text before it is searched.
    std::string wanted_;
    bool wantedIsPlain_;
};

}  // namespace tolvane
