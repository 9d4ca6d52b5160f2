#include "platform/macos/settings/PreferenceObjects.h"

#include <string>

#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

namespace {

/// By the C type that the number was made from: to the runtime booleans are chars.
PreferenceValue numberOf(const Runtime& runtime, Id number) {
    const char* type = runtime.send<const char*>(number, "objCType");
    switch (type == nullptr ? 'q' : *type) {
        case 'c':
        case 'B':
            return runtime.send<bool>(number, "boolValue");
        case 'f':
        case 'd':
            return runtime.send<double>(number, "doubleValue");
        default:
            return runtime.send<std::int64_t>(number, "longLongValue");
    }
}

Date dateOf(const Runtime& runtime, Id date) {
    return Date{Seconds{runtime.send<double>(date, "timeIntervalSinceReferenceDate")}};
}

/// Nullopt when one of the entries is not a date under a text.
std::optional<PreferenceValue> datesOf(const Runtime& runtime, Id dictionary) {
    PreferenceDates dates;
    for (const Id key : Foundation::elements(runtime, runtime.send(dictionary, "allKeys"))) {
        const Id date = runtime.send(dictionary, "objectForKey:", key);
        const auto name = Foundation::textIfString(runtime, key);
        if (!name || !Foundation::isKindOf(runtime, date, "NSDate")) return std::nullopt;
        dates.emplace(*name, dateOf(runtime, date));
    }
    return dates;
}

/// One conversion for each type of preference.
struct ToObject {
    const Runtime& runtime;

    Id operator()(bool value) const { return runtime.send(runtime.classNamed("NSNumber"), "numberWithBool:", value); }
    Id operator()(std::int64_t value) const {
        return runtime.send(runtime.classNamed("NSNumber"), "numberWithLongLong:", value);
    }
    Id operator()(double value) const {
        return runtime.send(runtime.classNamed("NSNumber"), "numberWithDouble:", value);
    }
    Id operator()(const std::string& value) const { return Foundation::string(runtime, value); }
    Id operator()(Date value) const {
        return runtime.send(runtime.classNamed("NSDate"),
                            "dateWithTimeIntervalSinceReferenceDate:", value.time_since_epoch().count());
    }
    Id operator()(const PreferenceDates& dates) const {
        const Id dictionary = runtime.send(runtime.classNamed("NSMutableDictionary"), "dictionary");
        for (const auto& [name, date] : dates) {
            runtime.send<void>(dictionary, "setObject:forKey:", (*this)(date), Foundation::string(runtime, name));
        }
        return dictionary;
    }
};

}  // namespace

std::optional<PreferenceValue> preferenceOf(const Runtime& runtime, Id object) {
    if (Foundation::isKindOf(runtime, object, "NSNumber")) return numberOf(runtime, object);
    if (Foundation::isKindOf(runtime, object, "NSDate")) return dateOf(runtime, object);
    if (Foundation::isKindOf(runtime, object, "NSDictionary")) return datesOf(runtime, object);
    const auto text = Foundation::textIfString(runtime, object);
    if (!text) return std::nullopt;
    return *text;
}

Id objectOf(const Runtime& runtime, const PreferenceValue& value) { return std::visit(ToObject{runtime}, value); }

}  // namespace tolvane::machost
