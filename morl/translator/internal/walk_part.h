// SPDX-License-Identifier: MIT
#pragma once

namespace ns_ruke {

class Walk;

/// A part of the walk: a view of a function object that takes the walk.
class WalkPart {
public:
    template <class Part>
    WalkPart(const Part& newPart)  // NOLINT(google-explicit-constructor)
        : part(&newPart), call([](const void* function, Walk& walk) {
              (*static_cast<const Part*>(function))(walk);
          })
    {
    }

    void operator()(Walk& walk) const { call(part, walk); }

private:
    const void* part;
    void (*call)(const void* function, Walk& walk);
};

}  // namespace ns_ruke
