#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// An object of the fake runtime.
struct FakeObject {
    std::string className;
    /// How it appears in the record of messages.
    std::string words;
    std::string text;
    Value number;
    std::vector<Id> items;
    std::map<std::string, Id> entries;
    /// Retains and creations that were not released.
    int owners = 0;
};

/// A method that a framework class really has: its result, then its arguments. `v` nothing, `@` object, `B` BOOL, `q`
/// NSInteger, `Q` NSUInteger, `d` double, `*` C string, `^` pointer, `{` NSSize, `I` a four-character code.
struct KnownMethod {
    std::string_view className;
    std::string_view selector;
    std::string_view types;
};

/// Objective-C in memory: strings, numbers, arrays and dictionaries work, and every other message returns what the test
/// set. A message that its receiver's class does not have, one with arguments of other types, and one sent without a
/// pool fail the test.
class FakeRuntime {
public:
    using Answer = std::function<Value(const Message&)>;

    FakeRuntime();
    FakeRuntime(const FakeRuntime&) = delete;
    FakeRuntime& operator=(const FakeRuntime&) = delete;
    ~FakeRuntime();

    ObjC runtime() const { return runtime_; }
    Id object(std::string_view className, std::string_view words);
    Id text(std::string_view text);
    Id url(std::string_view path);
    Id array(std::vector<Id> items);
    Id dictionary(std::map<std::string, Id> entries);
    Id number(std::string_view words, Value value);
    FakeObject& at(Id id) { return objects_.at(id); }
    /// What objects of any class answer to this message; without it they return nothing.
    void answer(const std::string& selector, Answer answer) { answers_[selector] = std::move(answer); }
    void answer(const std::string& selector, Value value) {
        answer(selector, [value](const Message&) { return value; });
    }
    /// Copies a block as the runtime does. The copy goes with this object.
    Id copyOf(Id block);

    /// The messages sent, except trivial ones to strings, paths and collections: "[workspace openURL: url /a]".
    std::vector<std::string> sent;
    /// Every message, as "NSWorkspace openURL:".
    std::set<std::string> used;
    int openPools = 0;
    /// Objects that still have owners, except constant ones.
    std::vector<std::string> leaked() const;

    struct MadeClass {
        std::string name;
        std::map<std::string, Id> blocks;
        std::map<std::string, std::string> types;
        bool registered = false;
    };
    /// Classes made at run time and not disposed of.
    std::map<Id, MadeClass> madeClasses;

private:
    RuntimeCalls calls();
    void addClassCalls(RuntimeCalls& calls);
    Value receive(const Message& message);
    Value basics(const Message& message);
    Value newObject(const Message& message);
    void check(const Message& message) const;
    std::string wordsOf(const Value& value) const;
    std::string wordsOf(const Message& message) const;
    const std::string& textOf(const Value& value) const;
    void disposeOf(Id block);

    std::unordered_map<Id, FakeObject> objects_;
    std::deque<char> addresses_;
    std::map<std::string, Id> classes_;
    std::map<std::string, Answer> answers_;
    std::map<AnyFunction, Id> implementations_;
    std::vector<Id> blocks_;
    ObjC runtime_;
};

/// The methods that the host may use, each with its class.
const std::vector<KnownMethod>& knownMethods();

}  // namespace tolvane::machost
