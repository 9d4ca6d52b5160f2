#include "core/words/TextSearch.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/stringoptions.h>

#include <algorithm>
#include <cstring>

#include "core/words/Formatters.h"

namespace tolvane {

namespace {

bool isPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char each) { return static_cast<unsigned char>(each) < 0x80; });
}

constexpr char lowerPlain(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

bool hasDotlessI(std::string_view locale) {
    const auto language = locale.substr(0, locale.find_first_of("_-@."));
    return language == "tr" || language == "az";
}

icu::StringPiece piece(std::string_view text) { return {text.data(), static_cast<std::int32_t>(text.size())}; }

/// Folds case and composes letters (NFC).
std::string folded(std::string_view text, bool dotlessI) {
    UErrorCode status = U_ZERO_ERROR;
    std::string caseless;
    icu::StringByteSink<std::string> toCaseless(&caseless, static_cast<std::int32_t>(text.size()));
    const std::uint32_t options = dotlessI ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
    icu::CaseMap::utf8Fold(options, piece(text), toCaseless, nullptr, status);
    const auto* composer = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status)) return std::string(text);
    std::string composed;
    icu::StringByteSink<std::string> toComposed(&composed, static_cast<std::int32_t>(caseless.size()));
    composer->normalizeUTF8(0, caseless, toComposed, nullptr, status);
    return U_SUCCESS(status) ? composed : caseless;
}

}  // namespace

TextSearch::TextSearch(std::string_view wanted, std::string_view locale)
    : dotlessI_(hasDotlessI(locale)), wanted_(folded(wanted, dotlessI_)), wantedIsPlain_(isPlain(wanted_)) {}

bool TextSearch::isIn(std::string_view text) const {
    if (wanted_.empty()) return true;
    const bool foldsToPlain = isPlain(text) && (!dotlessI_ || text.find('I') == std::string_view::npos);
    if (foldsToPlain) return wantedIsPlain_ && isInPlain(text);
    return folded(text, dotlessI_).find(wanted_) != std::string::npos;
}

bool TextSearch::isInPlain(std::string_view text) const {
    const auto same = [](char wanted, char letter) { return wanted == lowerPlain(letter); };
    const char first = wanted_.front();
    for (std::size_t at = 0; at + wanted_.size() <= text.size(); ++at) {
        if (lowerPlain(text[at]) != first) continue;
        const auto candidate = text.substr(at, wanted_.size());
        if (std::equal(wanted_.begin(), wanted_.end(), candidate.begin(), same)) return true;
    }
    return false;
}

}  // namespace tolvane
