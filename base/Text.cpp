#include "base/Text.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace tolvane {

SharedBlock::SharedBlock(std::size_t size) {
    if (size == 0) return;
    void* memory = ::operator new(sizeof(Header) + size);
    block_ = new (memory) Header{1, static_cast<std::uint32_t>(size)};
}

void SharedBlock::release() noexcept {
    if (!block_) return;
    // The only owner cannot race with a copy, so try the cheaper load before the atomic subtraction.
    const bool isOnly = block_->references.load(std::memory_order_acquire) == 1;
    if (!isOnly && block_->references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    block_->~Header();
    ::operator delete(block_);
}

Text::Text(std::string_view text) : block_(text.size()) {
    if (!text.empty()) std::memcpy(block_.bytes(), text.data(), text.size());
}

namespace {

std::uint32_t figureAt(const char* bytes, std::size_t index) {
    std::uint32_t figure;
    std::memcpy(&figure, bytes + index * sizeof figure, sizeof figure);
    return figure;
}

void putFigure(char* bytes, std::size_t index, std::size_t value) {
    const auto figure = static_cast<std::uint32_t>(value);
    std::memcpy(bytes + index * sizeof figure, &figure, sizeof figure);
}

}  // namespace

template <typename Texts>
void TextList::assign(const Texts& texts) {
    if (texts.size() == 0) return;
    std::size_t total = 0;
    for (std::string_view text : texts) total += text.size();
    const std::size_t figures = (1 + texts.size()) * sizeof(std::uint32_t);
    block_ = SharedBlock(figures + total);
    putFigure(block_.bytes(), 0, texts.size());
    std::size_t index = 0;
    std::size_t end = 0;
    for (std::string_view text : texts) {
        if (!text.empty()) std::memcpy(block_.bytes() + figures + end, text.data(), text.size());
        end += text.size();
        putFigure(block_.bytes(), ++index, end);
    }
}

TextList::TextList(std::initializer_list<std::string_view> texts) { assign(texts); }
TextList::TextList(const std::vector<std::string>& texts) { assign(texts); }
TextList::TextList(const std::vector<std::string_view>& texts) { assign(texts); }

std::size_t TextList::size() const noexcept { return block_.size() ? figureAt(block_.bytes(), 0) : 0; }

std::string_view TextList::operator[](std::size_t index) const noexcept {
    const std::size_t figures = (1 + size()) * sizeof(std::uint32_t);
    const std::size_t begin = index == 0 ? 0 : figureAt(block_.bytes(), index);
    const std::size_t end = figureAt(block_.bytes(), index + 1);
    return block_.view().substr(figures + begin, end - begin);
}

std::vector<std::string> TextList::strings() const {
    std::vector<std::string> result;
    result.reserve(size());
    for (std::string_view text : *this) result.emplace_back(text);
    return result;
}

std::string TextList::joined(std::string_view separator) const {
    std::string result;
    result.reserve(block_.size() + size() * separator.size());
    for (std::size_t index = 0; index < size(); ++index) {
        if (index > 0) result += separator;
        result += (*this)[index];
    }
    return result;
}

}  // namespace tolvane
