// SPDX-License-Identifier: MIT
#include "morl/translator/internal/text.h"

#include <algorithm>
#include <utility>

namespace ns_ruke {

void Text::Grow(std::size_t count)
{
    const std::size_t newRoom = std::max(2 * room, size + count);
    std::unique_ptr<char[]> grown(new char[newRoom]);
    std::copy_n(bytes.get(), size, grown.get());
    bytes = std::move(grown);
    room = newRoom;
}

}  // namespace ns_ruke
