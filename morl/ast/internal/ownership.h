// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/internal/unit_memory.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ns_ruke {

/// Deletes the elements of a vector of owning pointers; null entries are allowed.
template <class T>
void DeleteElements(const std::vector<T*>& elements)
{
    for (T* element : elements) {
        DeleteUnit(element);
    }
}

/// Gives an object to a vector of owning pointers. If the vector cannot grow, the object is freed.
/// The first element makes room for four, which is enough for most lists.
template <class T, class U>
void AppendOwned(std::vector<T*>& elements, std::unique_ptr<U> element)
{
    if (elements.capacity() == 0) {
        elements.reserve(4);
    }
    elements.push_back(element.get());
    element.release();
}

/// Makes room for `count` further elements, so that adding them cannot fail. Keeps growth
/// geometric.
template <class T>
void ReserveMore(std::vector<T>& elements, std::size_t count)
{
    const std::size_t wanted = elements.size() + count;
    if (wanted > elements.capacity()) {
        elements.reserve(std::max(wanted, 2 * elements.capacity()));
    }
}

}  // namespace ns_ruke
