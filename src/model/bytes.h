/// The byte encodings of both images: 32-bit words, texts, lists and blocks, all little-endian. The one place that puts
/// words into bytes and takes them out again. Relies on the standard library.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zek {

using TextList = std::vector<std::string>;

/// The word at an address.
inline unsigned WordAt(const unsigned char* from) {
    // Written out, so that the compiler makes one load of it.
    return unsigned{from[0]} | unsigned{from[1]} << 8 | unsigned{from[2]} << 16 | unsigned{from[3]} << 24;
}

/// Bytes in one block that grows at its end. New room is not cleared, so that what is about to be overwritten costs
/// nothing; large blocks grow without being copied.
class ByteBuffer {
public:
    ByteBuffer() = default;
    ByteBuffer(ByteBuffer&& other) noexcept { *this = std::move(other); }
    ByteBuffer& operator=(ByteBuffer&& other) noexcept {
        data_ = std::move(other.data_);
        size_ = std::exchange(other.size_, 0);
        room_ = std::exchange(other.room_, 0);
        return *this;
    }

    const unsigned char* Data() const { return data_.get(); }
    std::size_t Size() const { return size_; }
    std::string_view View() const { return {reinterpret_cast<const char*>(data_.get()), size_}; }

    /// Appends `count` bytes, which the caller fills.
    unsigned char* Extend(std::size_t count) {
        if (room_ - size_ < count) Grow(count);
        unsigned char* const added = data_.get() + size_;
        size_ += count;
        return added;
    }
    /// Takes the last `count` bytes away.
    void Shrink(std::size_t count) { size_ -= count; }
    /// Empties the buffer and keeps its room.
    void Clear() { size_ = 0; }
    unsigned char* At(std::size_t offset) { return data_.get() + offset; }

private:
    struct Free {
        void operator()(unsigned char* data) const { std::free(data); }
    };

    void Grow(std::size_t count) {
        const std::size_t room = std::max(size_ + count, 2 * room_);
        auto* const data = static_cast<unsigned char*>(std::realloc(data_.get(), room));
        if (!data) throw std::bad_alloc();
        static_cast<void>(data_.release());
        data_.reset(data);
        room_ = room;
    }

    std::unique_ptr<unsigned char, Free> data_;
    std::size_t size_ = 0;
    std::size_t room_ = 0;
};

/// Appends to a buffer that the caller owns.
class ByteWriter {
public:
    explicit ByteWriter(ByteBuffer& out) : out_(out) {}

    std::size_t Position() const { return out_.Size(); }

    void Raw(std::string_view bytes) {
        if (!bytes.empty()) std::memcpy(out_.Extend(bytes.size()), bytes.data(), bytes.size());
    }
    void Zeros(std::size_t count) {
        if (count) std::memset(out_.Extend(count), 0, count);
    }
    void U32(unsigned word) { Put(out_.Extend(4), word); }
    /// The words of both, one behind the other.
    void Words(std::initializer_list<unsigned> first, std::span<const unsigned> rest = {}) {
        unsigned char* to = out_.Extend(4 * (first.size() + rest.size()));
        for (unsigned word : first) to = Put(to, word);
        for (unsigned word : rest) to = Put(to, word);
    }
    void Str(std::string_view text) {
        unsigned char* const added = out_.Extend(4 + text.size());
        unsigned char* const bytes = Put(added, static_cast<unsigned>(text.size()));
        if (!text.empty()) std::memcpy(bytes, text.data(), text.size());
    }
    void List(const TextList& list) {
        U32(static_cast<unsigned>(list.size()));
        for (const std::string& text : list) Str(text);
    }
    /// A length, then what `fill` appends.
    template <class Fill>
    void Block(Fill&& fill) {
        const std::size_t length = out_.Size();
        out_.Extend(4);
        fill();
        SetU32(length, static_cast<unsigned>(out_.Size() - length - 4));
    }
    /// Overwrites the word at `offset`.
    void SetU32(std::size_t offset, unsigned word) { Put(out_.At(offset), word); }

private:
    /// Gives the position behind the word.
    static unsigned char* Put(unsigned char* to, unsigned word) {
        // Written out, so that the compiler makes one store of it.
        to[0] = static_cast<unsigned char>(word);
        to[1] = static_cast<unsigned char>(word >> 8);
        to[2] = static_cast<unsigned char>(word >> 16);
        to[3] = static_cast<unsigned char>(word >> 24);
        return to + 4;
    }

    ByteBuffer& out_;
};

/// Takes words, texts and blocks from bytes that the caller keeps alive. Every read past the end throws
/// `std::out_of_range` with the text "vector::_M_range_check" and takes nothing.
///
/// A reader may be longer than the bytes it was given: what is missing reads as zeros, without memory being taken for
/// them.
class ByteReader {
public:
    explicit ByteReader(const ByteBuffer& bytes) : ByteReader(bytes.Data(), bytes.Size(), bytes.Size()) {}
    explicit ByteReader(const std::vector<unsigned char>& bytes)
        : ByteReader(bytes.data(), bytes.size(), bytes.size()) {}
    ByteReader(const unsigned char* data, std::size_t present, std::size_t size)
        : data_(data), present_(present), size_(size) {}

    std::size_t Position() const { return position_; }
    std::size_t Left() const { return size_ - position_; }
    /// Goes to a position; one past the end is the end.
    void Seek(std::size_t position) { position_ = position < size_ ? position : size_; }

    unsigned U32() {
        Require(Left() >= 4);
        position_ += 4;
        return position_ <= present_ ? WordAt(data_ + position_ - 4) : CutWord();
    }
    /// So many words, one behind the other; takes none when the bytes end before the last.
    std::vector<unsigned> Words(std::size_t count) {
        Require(count <= Left() / 4 && 4 * count <= PresentLeft() + kMostZeros);
        std::vector<unsigned> words(count);
        const std::size_t present = std::min(count, PresentLeft() / 4);
        for (std::size_t i = 0; i < present; ++i) words[i] = WordAt(data_ + position_ + 4 * i);
        position_ += 4 * present;
        for (std::size_t i = present; i < count; ++i) words[i] = U32();
        return words;
    }
    std::string Text(std::size_t length) {
        Require(length <= Left() && length <= PresentLeft() + kMostZeros);
        std::string text;
        if (const std::size_t present = std::min(length, PresentLeft())) {
            text.assign(reinterpret_cast<const char*>(data_ + position_), present);
        }
        text.resize(length);
        position_ += length;
        return text;
    }
    std::string Str() { return Text(U32()); }
    /// The next bytes where they lie, at most so many: those that are missing are left out.
    std::string_view View(std::size_t most) {
        const std::size_t length = std::min(most, PresentLeft());
        const std::string_view bytes(length ? reinterpret_cast<const char*>(data_ + position_) : "", length);
        position_ += length;
        return bytes;
    }
    /// Appends to `list`, element by element: what was read before a damaged element stays.
    void List(TextList& list) {
        const std::size_t count = U32();
        const std::size_t most = (PresentLeft() + kMostZeros) / 4;
        // An element takes eight times the bytes of its length, and in a vector that grows twice that.
        list.reserve(list.size() + std::min({count, most, Left() / 4}));
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
    /// The word before this position, of which bytes are missing.
    [[gnu::cold]] unsigned CutWord() const {
        unsigned char bytes[4] = {};
        for (std::size_t at = position_ - 4; at < present_; ++at) bytes[at + 4 - position_] = data_[at];
        return WordAt(bytes);
    }

    const unsigned char* data_;
    std::size_t present_;
    std::size_t size_;
    std::size_t position_ = 0;
};

/// Fills a vector, its content before lost, with what `put` appends to a writer.
template <class Put>
void FillBuffer(std::vector<unsigned char>& out, Put&& put) {
    ByteBuffer buffer;
    ByteWriter writer(buffer);
    put(writer);
    out.assign(buffer.Data(), buffer.Data() + buffer.Size());
}

}  // namespace zek
