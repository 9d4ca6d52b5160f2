#pragma once

#include <atomic>
#include <compare>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane {

/// A reference-counted, immutable heap block that any number of values on any threads share.
class SharedBlock {
public:
    SharedBlock() = default;
    /// The caller fills the `size` bytes before it makes the first copy.
    explicit SharedBlock(std::size_t size);
    SharedBlock(const SharedBlock& other) noexcept : block_(other.block_) { retain(); }
    SharedBlock(SharedBlock&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    SharedBlock& operator=(const SharedBlock& other) noexcept {
        SharedBlock(other).swap(*this);
        return *this;
    }
    SharedBlock& operator=(SharedBlock&& other) noexcept {
        SharedBlock(std::move(other)).swap(*this);
        return *this;
    }
    ~SharedBlock() { release(); }

    void swap(SharedBlock& other) noexcept { std::swap(block_, other.block_); }
    bool sameAs(const SharedBlock& other) const noexcept { return block_ == other.block_; }
    char* bytes() const noexcept { return block_ ? reinterpret_cast<char*>(block_ + 1) : nullptr; }
    std::size_t size() const noexcept { return block_ ? block_->size : 0; }
    /// All bytes at once.
    std::string_view view() const noexcept { return {bytes(), size()}; }

private:
    struct Header {
        std::atomic<std::uint32_t> references;
        std::uint32_t size;
    };

    void retain() const noexcept {
        if (block_) block_->references.fetch_add(1, std::memory_order_relaxed);
    }
    void release() noexcept;

    Header* block_ = nullptr;
};

/// An immutable text whose copies share one block, so the cold facts of a process pass from one sweep to the next as
/// a pointer. An empty text owns nothing.
class Text {
public:
    Text() = default;
    // NOLINTBEGIN(google-explicit-constructor): a text is accepted wherever a string is.
    Text(std::string_view text);
    Text(const std::string& text) : Text(std::string_view(text)) {}
    Text(const char* text) : Text(std::string_view(text)) {}

    std::string_view view() const noexcept { return block_.view(); }
    operator std::string_view() const noexcept { return view(); }
    // NOLINTEND(google-explicit-constructor)
    std::string str() const { return std::string(view()); }
    bool empty() const noexcept { return size() == 0; }
    std::size_t size() const noexcept { return block_.size(); }

    friend bool operator==(const Text& a, const Text& b) noexcept {
        return a.block_.sameAs(b.block_) || a.view() == b.view();
    }
    friend bool operator==(const Text& a, std::string_view b) noexcept { return a.view() == b; }
    friend bool operator==(const Text& a, const std::string& b) noexcept { return a.view() == b; }
    friend bool operator==(const Text& a, const char* b) noexcept { return a.view() == b; }
    friend std::strong_ordering operator<=>(const Text& a, const Text& b) noexcept { return a.view() <=> b.view(); }

private:
    SharedBlock block_;
};

/// An immutable list of texts, such as a process's arguments, in one shared block.
class TextList {
public:
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = std::string_view;
        using difference_type = std::ptrdiff_t;
        using pointer = const std::string_view*;
        using reference = std::string_view;

        Iterator() = default;
        Iterator(const TextList* list, std::size_t index) : list_(list), index_(index) {}
        std::string_view operator*() const { return (*list_)[index_]; }
        Iterator& operator++() {
            ++index_;
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++index_;
            return before;
        }
        bool operator==(const Iterator& other) const = default;

    private:
        const TextList* list_ = nullptr;
        std::size_t index_ = 0;
    };

    TextList() = default;
    TextList(std::initializer_list<std::string_view> texts);
    explicit TextList(const std::vector<std::string>& texts);
    explicit TextList(const std::vector<std::string_view>& texts);

    std::size_t size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    /// `index` is below `size()`.
    std::string_view operator[](std::size_t index) const noexcept;
    std::string_view front() const noexcept { return (*this)[0]; }
    Iterator begin() const { return {this, 0}; }
    Iterator end() const { return {this, size()}; }

    std::vector<std::string> strings() const;
    /// The texts joined by `separator`.
    std::string joined(std::string_view separator) const;

    friend bool operator==(const TextList& a, const TextList& b) noexcept {
        return a.block_.sameAs(b.block_) || a.block_.view() == b.block_.view();
    }

private:
    template <typename Texts>
    void assign(const Texts& texts);

    /// Layout: the count, the end offset of each text (each a std::uint32_t), then the bytes of all texts.
    SharedBlock block_;
};

}  // namespace tolvane

template <>
struct std::hash<tolvane::Text> {
    std::size_t operator()(const tolvane::Text& text) const noexcept {
        return std::hash<std::string_view>{}(text.view());
    }
};
