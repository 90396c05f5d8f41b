/// The byte encodings of both images: 32-bit words, texts, lists and blocks, all little-endian. The one place that puts
/// words into bytes and takes them out again. Relies on the standard library.
#pragma once

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zek {

using Bytes = std::vector<unsigned char>;
using TextList = std::vector<std::string>;

/// Appends to a vector of bytes that the caller owns.
class ByteWriter {
public:
    explicit ByteWriter(Bytes& out) : out_(out) {}

    std::size_t Position() const { return out_.size(); }

    void Raw(std::string_view bytes) {
        const std::size_t end = out_.size();
        Zeros(bytes.size());
        if (!bytes.empty()) std::memcpy(&out_[end], bytes.data(), bytes.size());
    }
    void Zeros(std::size_t count) { out_.resize(out_.size() + count); }
    void U32(unsigned word) {
        Zeros(4);
        SetU32(out_.size() - 4, word);
    }
    void Str(std::string_view text) {
        U32(static_cast<unsigned>(text.size()));
        Raw(text);
    }
    void List(const TextList& list) {
        U32(static_cast<unsigned>(list.size()));
        for (const std::string& text : list) Str(text);
    }
    /// A length, then what `fill` appends.
    template <class Fill>
    void Block(Fill&& fill) {
        const std::size_t length = out_.size();
        Zeros(4);
        fill();
        SetU32(length, static_cast<unsigned>(out_.size() - length - 4));
    }
    /// Overwrites the word at `offset`.
    void SetU32(std::size_t offset, unsigned word) {
        for (std::size_t i = 0; i < 4; ++i) out_[offset + i] = static_cast<unsigned char>(word >> (8 * i));
    }

private:
    Bytes& out_;
};

/// Takes words, texts and blocks from bytes that the caller keeps alive. Every read past the end throws
/// `std::out_of_range` with the text "vector::_M_range_check" and takes nothing.
///
/// A reader may be longer than the bytes it was given: what is missing reads as zeros, without memory being taken for
/// them.
class ByteReader {
public:
    explicit ByteReader(const Bytes& bytes) : ByteReader(bytes.data(), bytes.size(), bytes.size()) {}
    ByteReader(const unsigned char* data, std::size_t present, std::size_t size)
        : data_(data), present_(present), size_(size) {}

    std::size_t Position() const { return position_; }
    std::size_t Left() const { return size_ - position_; }
    /// Goes to a position; one past the end is the end.
    void Seek(std::size_t position) { position_ = position < size_ ? position : size_; }

    unsigned U32() {
        Require(Left() >= 4);
        unsigned word = 0;
        for (std::size_t i = 0; i < 4; ++i) word |= static_cast<unsigned>(At(position_ + i)) << (8 * i);
        position_ += 4;
        return word;
    }
    std::string Text(std::size_t length) {
        Require(length <= Left() && length <= PresentLeft() + kMostZeros);
        std::string text(length, '\0');
        const std::size_t present = length < PresentLeft() ? length : PresentLeft();
        if (present) std::memcpy(text.data(), data_ + position_, present);
        position_ += length;
        return text;
    }
    std::string Str() { return Text(U32()); }
    /// Appends to `list`, element by element: what was read before a damaged element stays.
    void List(TextList& list) {
        const std::size_t count = U32();
        const std::size_t most = (PresentLeft() + kMostZeros) / 4;
        for (std::size_t i = 0; i < count; ++i) {
            Require(i < most);
            list.push_back(Str());
        }
    }
    /// A reader of the next block's bytes, this one then standing behind them.
    ByteReader Block() { return Sub(U32()); }
    /// A reader of the next `length` bytes.
    ByteReader Sub(std::size_t length) {
        Require(length <= Left());
        return SubWithZeros(length);
    }
    /// The same, also past the end: what is missing reads as zeros.
    ByteReader SubWithZeros(std::size_t length) {
        const std::size_t present = length < PresentLeft() ? length : PresentLeft();
        const ByteReader inner(present ? data_ + position_ : nullptr, present, length);
        position_ = length < Left() ? position_ + length : size_;
        return inner;
    }

private:
    /// A text or list may be made of missing bytes only up to this many: a length in a damaged file takes no more
    /// memory.
    static constexpr std::size_t kMostZeros = std::size_t{1} << 20;

    static void Require(bool inside) {
        if (!inside) throw std::out_of_range("vector::_M_range_check");
    }
    std::size_t PresentLeft() const { return position_ < present_ ? present_ - position_ : 0; }
    unsigned char At(std::size_t index) const { return index < present_ ? data_[index] : 0; }

    const unsigned char* data_;
    std::size_t present_;
    std::size_t size_;
    std::size_t position_ = 0;
};

/// Fills an emptied vector with what `put` appends to a writer.
template <class Put>
void FillBuffer(Bytes& out, Put&& put) {
    out.clear();
    ByteWriter writer(out);
    put(writer);
}

}  // namespace zek
