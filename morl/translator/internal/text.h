// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace ns_ruke {

/// A text under construction. Writing a shader is mostly appending a few bytes at a time, so this
/// is inline, and all parts of a call share one check for room.
class Text {
public:
    Text() = default;
    /// @param newRoom bytes that can be appended before the text has to grow.
    explicit Text(std::size_t newRoom) : bytes(new char[newRoom]), room(newRoom) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    /// Appends characters, literals and anything that converts to std::string_view, in order. No
    /// part may be a view of this text.
    template <class... Parts>
    void Append(const Parts&... parts)
    {
        MakeRoom((SizeOf(parts) + ...));
        (Put(parts), ...);
    }

    /// Appends a part of this text once more.
    void Repeat(std::size_t start, std::size_t count)
    {
        MakeRoom(count);
        Put(std::string_view(bytes.get() + start, count));
    }

    std::size_t Size() const { return size; }

    /// Removes everything after the first `newSize` bytes.
    void Truncate(std::size_t newSize) { size = newSize; }

    std::string Copy() const { return {bytes.get(), size}; }

private:
    static constexpr std::size_t SizeOf(char /*part*/) { return 1; }
    static constexpr std::size_t SizeOf(std::string_view part) { return part.size(); }

    void MakeRoom(std::size_t count)
    {
        if (room - size < count) {
            Grow(count);
        }
    }
    void Grow(std::size_t count);

    void Put(char part) { bytes[size++] = part; }
    void Put(std::string_view part) { size += part.copy(bytes.get() + size, part.size()); }

    std::unique_ptr<char[]> bytes;
    std::size_t room = 0;  ///< of `bytes`
    std::size_t size = 0;
};

}  // namespace ns_ruke
