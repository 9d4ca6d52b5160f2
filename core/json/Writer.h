#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tolvane::json {

enum class Style {
    /// One line without blanks, keys in declared order.
    compact,
    /// Two blanks per level, `"key" : value`, keys sorted.
    pretty,
};

/// Builds a JSON text token by token. The caller is responsible for a valid order of tokens.
class Writer {
public:
    explicit Writer(Style style) : style_(style) {}

    Style style() const { return style_; }

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginList() { begin('['); }
    void endList() { end(']'); }
    /// Must be followed by a value.
    void key(std::string_view name);
    /// Call before each value of a list.
    void item() { separate(); }

    void boolean(bool value) { text_ += value ? "true" : "false"; }
    void number(std::int64_t value) { text_ += std::to_string(value); }
    void number(std::uint64_t value) { text_ += std::to_string(value); }
    /// JSON has no text for a number that is not finite; writing one fails the whole document.
    void number(double value);
    /// Repairs invalid UTF-8, because one bad byte would make a whole file unreadable.
    void string(std::string_view value);

    bool failed() const { return failed_; }
    std::string take() && { return std::move(text_); }

private:
    void begin(char bracket);
    void end(char bracket);
    void separate();
    void newLine();

    Style style_;
    std::string text_;
    std::size_t depth_ = 0;
    bool first_ = true;
    bool failed_ = false;
};

}  // namespace tolvane::json
