#include "tests/platform/macos/FakeRuntime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "platform/macos/objc/Block.h"

namespace tolvane::machost {

namespace {

/// Too frequent to be readable in a record.
const std::set<std::string_view> smallChange = {"stringWithUTF8String:",
                                                "UTF8String",
                                                "fileURLWithPath:",
                                                "path",
                                                "count",
                                                "objectAtIndex:",
                                                "firstObject",
                                                "className",
                                                "bytes",
                                                "length",
                                                "isKindOfClass:",
                                                "objectForKey:",
                                                "allKeys",
                                                "alloc",
                                                "autorelease",
                                                "objCType",
                                                "boolValue",
                                                "longLongValue",
                                                "doubleValue",
                                                "timeIntervalSinceReferenceDate",
                                                "localizedDescription"};

char codeOf(const Value& value) {
    constexpr std::string_view codes = "v@BqQd*^{I";
    return codes[value.index()];
}

bool inherits(std::string_view className, std::string_view base) {
    return className == base || base == "NSObject" || className == "NSMutable" + std::string(base.substr(2));
}

const KnownMethod* methodOf(std::string_view className, std::string_view selector) {
    for (const auto& each : knownMethods()) {
        const bool applies = inherits(className, each.className);
        if (applies && each.selector == selector) return &each;
    }
    return nullptr;
}

}  // namespace

FakeRuntime::FakeRuntime() : runtime_(std::make_shared<const Runtime>(calls())) {}

FakeRuntime::~FakeRuntime() {
    for (const Id block : blocks_) disposeOf(block);
}

Id FakeRuntime::object(std::string_view className, std::string_view words) {
    const auto id = reinterpret_cast<Id>(&addresses_.emplace_back());
    objects_[id] = FakeObject{.className = std::string(className), .words = std::string(words)};
    return id;
}

Id FakeRuntime::text(std::string_view text) {
    const Id made = object("NSString", "\"" + std::string(text) + "\"");
    at(made).text = text;
    return made;
}

Id FakeRuntime::url(std::string_view path) {
    const Id made = object("NSURL", "url " + std::string(path));
    at(made).text = path;
    return made;
}

Id FakeRuntime::array(std::vector<Id> items) {
    const Id made = object("NSArray", "array");
    at(made).items = std::move(items);
    return made;
}

Id FakeRuntime::dictionary(std::map<std::string, Id> entries) {
    const Id made = object("NSDictionary", "dictionary");
    at(made).entries = std::move(entries);
    return made;
}

Id FakeRuntime::number(std::string_view words, Value value) {
    const bool isDate = words.starts_with("date");
    const Id made = object(isDate ? "NSDate" : "NSNumber", words);
    at(made).number = value;
    return made;
}

std::string FakeRuntime::wordsOf(const Value& value) const {
    std::ostringstream words;
    if (const auto* id = std::get_if<Id>(&value)) {
        const auto found = objects_.find(*id);
        words << (*id == nullptr ? "nil" : found == objects_.end() ? "block" : found->second.words);
    } else if (const auto* yes = std::get_if<bool>(&value)) {
        words << (*yes ? "YES" : "NO");
    } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        words << *whole;
    } else if (const auto* natural = std::get_if<std::uint64_t>(&value)) {
        words << *natural;
    } else if (const auto* code = std::get_if<std::uint32_t>(&value)) {
        for (const unsigned shift : {24U, 16U, 8U, 0U}) words << static_cast<char>(*code >> shift & 0xFFU);
    } else if (const auto* real = std::get_if<double>(&value)) {
        words << *real;
    } else if (const auto* bytes = std::get_if<const char*>(&value)) {
        words << *bytes;
    } else {
        words << "pointer";
    }
    return words.str();
}

/// "[workspace openURL:url /a]"
std::string FakeRuntime::wordsOf(const Message& message) const {
    std::string words = "[" + wordsOf(Value(message.receiver)) + " ";
    std::string_view selector = message.selector;
    if (message.arguments.empty()) return words + std::string(selector) + "]";
    for (std::size_t index = 0; index < message.arguments.size(); ++index) {
        const auto end = selector.find(':') + 1;
        words += (index == 0 ? "" : " ") + std::string(selector.substr(0, end)) + wordsOf(message.arguments[index]);
        selector.remove_prefix(end);
    }
    return words + "]";
}

void FakeRuntime::check(const Message& message) const {
    const std::string selector = message.selector;
    EXPECT_GT(openPools, 0) << selector << " without a pool";
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(selector, ':')), message.arguments.size()) << selector;
    const auto found = objects_.find(message.receiver);
    if (found == objects_.end() || madeClasses.contains(message.receiver)) return;
    const auto* method = methodOf(found->second.className, selector);
    if (method == nullptr) {
        ADD_FAILURE() << found->second.className << " has no method " << selector;
        return;
    }
    std::string types;
    for (const auto& argument : message.arguments) types += codeOf(argument);
    EXPECT_EQ(types, method->types.substr(1)) << wordsOf(message);
}

Value FakeRuntime::receive(const Message& message) {
    check(message);
    // As the real runtime does.
    if (message.receiver == nullptr) return {};
    const auto found = objects_.find(message.receiver);
    const std::string className = found == objects_.end() ? "" : found->second.className;
    const auto* method = methodOf(className, message.selector);
    if (method) used.insert(std::string(method->className) + " " + std::string(method->selector));
    if (!smallChange.contains(message.selector)) sent.push_back(wordsOf(message));
    const auto answered = answers_.find(message.selector);
    auto value = answered == answers_.end() ? basics(message) : answered->second(message);
    const bool rightType = !method || value.index() == 0 || codeOf(value) == method->types[0];
    EXPECT_TRUE(rightType) << "the test's answer to " << message.selector << " has another type than the method";
    return value;
}

const std::string& FakeRuntime::textOf(const Value& value) const { return objects_.at(std::get<Id>(value)).text; }

/// The messages that make new objects.
Value FakeRuntime::newObject(const Message& message) {
    const std::string_view selector = message.selector;
    const auto argument = message.arguments.empty() ? Value() : message.arguments[0];
    if (selector == "stringWithUTF8String:") return text(std::get<const char*>(argument));
    if (selector == "fileURLWithPath:") return url(textOf(argument));
    if (selector == "numberWithBool:") return number("number " + wordsOf(argument), argument);
    if (selector == "numberWithLongLong:") return number("number " + wordsOf(argument), argument);
    if (selector == "numberWithDouble:") return number("number " + wordsOf(argument), argument);
    if (selector == "dateWithTimeIntervalSinceReferenceDate:") return number("date " + wordsOf(argument), argument);
    const auto name = objects_.at(message.receiver).className;
    if (selector == "dictionary") return object(name, "dictionary");
    if (selector == "dictionaryWithObject:forKey:") {
        const Id made = dictionary({{textOf(message.arguments[1]), std::get<Id>(argument)}});
        at(made).words = "{" + wordsOf(message.arguments[1]) + ": " + wordsOf(argument) + "}";
        return made;
    }
    if (selector == "alloc" || selector == "new") {
        const Id made = object(name, "new " + name);
        at(made).owners = 1;
        return made;
    }
    return {};
}

Value FakeRuntime::basics(const Message& message) {
    const std::string_view selector = message.selector;
    auto& receiver = objects_.at(message.receiver);
    const auto argument = message.arguments.empty() ? Value() : message.arguments[0];
    if (selector == "UTF8String") return receiver.text.c_str();
    if (selector == "bytes") return static_cast<void*>(receiver.text.data());
    if (selector == "length") return std::uint64_t{receiver.text.size()};
    if (selector == "className") return text(receiver.className);
    if (selector == "path" || selector == "localizedDescription") return text(receiver.text);
    if (selector == "count") return std::uint64_t{receiver.items.size()};
    if (selector == "objectAtIndex:") return receiver.items.at(std::get<std::uint64_t>(argument));
    if (selector == "firstObject") return receiver.items.empty() ? Id{} : receiver.items[0];
    if (selector == "isKindOfClass:") {
        const auto& wanted = objects_.at(std::get<Id>(argument)).className;
        return inherits(receiver.className, wanted);
    }
    if (selector == "objectForKey:") {
        const auto found = receiver.entries.find(textOf(argument));
        return found == receiver.entries.end() ? Id{} : found->second;
    }
    if (selector == "allKeys") {
        std::vector<Id> keys;
        for (const auto& [key, entry] : receiver.entries) keys.push_back(text(key));
        return array(keys);
    }
    if (selector == "setObject:forKey:") receiver.entries[textOf(message.arguments[1])] = std::get<Id>(argument);
    if (selector == "boolValue" || selector == "longLongValue" || selector == "doubleValue" ||
        selector == "timeIntervalSinceReferenceDate") {
        return receiver.number;
    }
    if (selector == "objCType") {
        constexpr std::array<const char*, 6> types = {"v", "@", "c", "q", "Q", "d"};
        return types[receiver.number.index()];
    }
    if (selector == "autorelease") {
        --receiver.owners;
        return message.receiver;
    }
    return newObject(message);
}

RuntimeCalls FakeRuntime::calls() {
    RuntimeCalls calls;
    calls.send = [this](const Message& message, Perform) { return receive(message); };
    calls.findClass = [this](const char* name) {
        auto& found = classes_[name];
        if (found == nullptr) found = object(name, name);
        return found;
    };
    calls.retain = [this](Id id) { ++at(id).owners; };
    calls.release = [this](Id id) { --at(id).owners; };
    calls.pushPool = [this]() -> void* {
        ++openPools;
        return this;
    };
    calls.popPool = [this](void* pool) {
        EXPECT_EQ(pool, this);
        --openPools;
    };
    calls.homeFolder = [this] { return text("/Users/ada"); };
    addClassCalls(calls);
    return calls;
}

void FakeRuntime::addClassCalls(RuntimeCalls& calls) {
    calls.allocateClass = [this](Id, const char* name) -> Id {
        for (const auto& [id, each] : madeClasses) {
            if (each.name == name) return nullptr;
        }
        const Id id = object(name, name);
        madeClasses[id].name = name;
        return id;
    };
    calls.addMethod = [this](Id id, const char* selector, AnyFunction implementation, const char* types) {
        EXPECT_FALSE(madeClasses.at(id).registered);
        madeClasses.at(id).blocks[selector] = implementations_.at(implementation);
        madeClasses.at(id).types[selector] = types;
        return true;
    };
    calls.registerClass = [this](Id id) { madeClasses.at(id).registered = true; };
    calls.disposeClass = [this](Id id) { madeClasses.erase(id); };
    calls.implementationOf = [this](Id block) {
        const auto implementation = reinterpret_cast<AnyFunction>(&addresses_.emplace_back());
        implementations_[implementation] = copyOf(block);
        return implementation;
    };
    calls.removeImplementation = [this](AnyFunction implementation) { implementations_.erase(implementation); };
    calls.stackBlockClass = this;
}

Id FakeRuntime::copyOf(Id block) {
    const auto* head = reinterpret_cast<const BlockHead*>(block);
    EXPECT_EQ(head->isa, this);
    EXPECT_EQ(head->flags, blockCopiesAndDisposes | blockHasSignature);
    void* copy = std::malloc(head->descriptor->size);
    std::memcpy(copy, head, head->descriptor->size);
    head->descriptor->copy(copy, head);
    return blocks_.emplace_back(static_cast<Id>(copy));
}

void FakeRuntime::disposeOf(Id block) {
    const auto* head = reinterpret_cast<const BlockHead*>(block);
    head->descriptor->dispose(head);
    std::free(block);
}

std::vector<std::string> FakeRuntime::leaked() const {
    std::vector<std::string> found;
    for (const auto& [id, object] : objects_) {
        if (object.owners != 0) found.push_back(object.words + " " + std::to_string(object.owners));
    }
    return found;
}

}  // namespace tolvane::machost
