#include "core/json/Writer.h"

#include <array>
#include <cmath>

#include "base/Decimal.h"
#include "base/UTF8.h"

namespace tolvane::json {

namespace {

/// The character after the backslash for those that have a short form, or 0.
char shortEscape(char character) {
    switch (character) {
        case '"':
        case '\\':
        case '/':
            return character;
        case '\b':
            return 'b';
        case '\f':
            return 'f';
        case '\n':
            return 'n';
        case '\r':
            return 'r';
        case '\t':
            return 't';
        default:
            return 0;
    }
}

bool isControl(char character) { return static_cast<unsigned char>(character) < 0x20; }

bool needsEscape(char character) {
    return isControl(character) || character == '"' || character == '\\' || character == '/';
}

void appendEscaped(std::string& text, char character) {
    text += '\\';
    if (const char letter = shortEscape(character)) {
        text += letter;
        return;
    }
    constexpr std::string_view digits = "0123456789abcdef";
    text += "u00";
    text += digits[static_cast<unsigned char>(character) >> 4U];
    text += digits[static_cast<unsigned char>(character) & 0xFU];
}

void appendValid(std::string& text, std::string_view value) {
    std::size_t plain = 0;
    for (std::size_t index = 0; index < value.size(); ++index) {
        if (!needsEscape(value[index])) continue;
        text += value.substr(plain, index - plain);
        appendEscaped(text, value[index]);
        plain = index + 1;
    }
    text += value.substr(plain);
}

}  // namespace

void Writer::key(std::string_view name) {
    separate();
    string(name);
    text_ += style_ == Style::pretty ? " : " : ":";
}

void Writer::number(double value) {
    if (!std::isfinite(value)) {
        failed_ = true;
        return;
    }
    text_ += Decimal::shortest(value);
}

void Writer::string(std::string_view value) {
    text_ += '"';
    if (UTF8::isValid(value)) {
        appendValid(text_, value);
    } else {
        appendValid(text_, UTF8::repaired(value));
    }
    text_ += '"';
}

void Writer::begin(char bracket) {
    text_ += bracket;
    ++depth_;
    first_ = true;
}

void Writer::end(char bracket) {
    --depth_;
    if (style_ == Style::pretty) {
        if (first_) text_ += '\n';
        newLine();
    }
    text_ += bracket;
    first_ = false;
}

void Writer::separate() {
    if (!first_) text_ += ',';
    first_ = false;
    if (style_ == Style::pretty) newLine();
}

void Writer::newLine() {
    text_ += '\n';
    text_.append(2 * depth_, ' ');
}

}  // namespace tolvane::json
