#include "core/json/Reading.h"

namespace tolvane::json {

namespace ondemand = simdjson::ondemand;

namespace {

/// Far deeper than any real file. Bounds the stack that a hostile file can use.
constexpr int deepestSkipped = 256;

bool skipWithin(ondemand::value value, Reading& reading, int depth);

bool skipObject(ondemand::value value, Reading& reading, int depth) {
    ondemand::object object;
    if (const auto error = value.get_object().get(object)) return reading.fail(error);
    for (auto next : object) {
        ondemand::field field;
        std::string_view key;
        if (const auto error = std::move(next).get(field)) return reading.fail(error);
        if (const auto error = field.unescaped_key().get(key)) return reading.fail(error);
        if (!skipWithin(field.value(), reading, depth + 1)) return false;
    }
    return true;
}

bool skipList(ondemand::value value, Reading& reading, int depth) {
    ondemand::array array;
    if (const auto error = value.get_array().get(array)) return reading.fail(error);
    for (auto next : array) {
        ondemand::value element;
        if (const auto error = std::move(next).get(element)) return reading.fail(error);
        if (!skipWithin(element, reading, depth + 1)) return false;
    }
    return true;
}

bool skipScalar(ondemand::value value, ondemand::json_type type, Reading& reading) {
    std::string_view text;
    double number = 0;
    bool truth = false;
    switch (type) {
        case ondemand::json_type::string:
            return value.get(text) == simdjson::SUCCESS || reading.fail("not valid JSON");
        case ondemand::json_type::number:
            return value.get(number) == simdjson::SUCCESS || reading.fail("not valid JSON");
        case ondemand::json_type::boolean:
            return value.get(truth) == simdjson::SUCCESS || reading.fail("not valid JSON");
        default:
            break;
    }
    return (value.is_null().get(truth) == simdjson::SUCCESS && truth) || reading.fail("not valid JSON");
}

bool skipWithin(ondemand::value value, Reading& reading, int depth) {
    if (depth > deepestSkipped) return reading.fail("nested too deeply");
    ondemand::json_type type{};
    if (const auto error = value.type().get(type)) return reading.fail(error);
    if (type == ondemand::json_type::object) return skipObject(value, reading, depth);
    if (type == ondemand::json_type::array) return skipList(value, reading, depth);
    return skipScalar(value, type, reading);
}

}  // namespace

bool Reading::fail(std::string_view what) {
    if (error.what.empty()) error.what = what;
    return false;
}

bool Reading::fail(simdjson::error_code code) {
    return fail(code == simdjson::EMPTY ? std::string("empty")
                                        : std::string("not valid JSON: ") + simdjson::error_message(code));
}

bool Reading::within(std::string_view key) {
    const bool joins = error.where.empty() || error.where.starts_with('[');
    error.where = std::string(key) + (joins ? "" : ".") + error.where;
    return false;
}

bool Reading::within(std::size_t index) {
    const bool joins = error.where.empty() || error.where.starts_with('[');
    error.where = "[" + std::to_string(index) + "]" + (joins ? "" : ".") + error.where;
    return false;
}

bool skip(ondemand::value value, Reading& reading) { return skipWithin(value, reading, 0); }

bool isAtEnd(ondemand::document& document, Reading& reading) {
    return document.current_location().error() == simdjson::OUT_OF_BOUNDS || reading.fail("not valid JSON");
}

}  // namespace tolvane::json
