// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace ns_ruke {

/// The kinds of handles that hosts have. The numbers occur in no other memory by chance.
enum class HandleKind : std::uint32_t {
    Destroyed = 0,
    Compiler = 0x4d6f431dU,
    Result = 0x4d6f5261U,
    Program = 0x4d6f5027U,
};

/// What every handle begins with, so that a wrong one is refused as long as its memory has not been
/// used for something else.
class Handle {
public:
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    HandleKind Kind() const { return kind; }

protected:
    explicit Handle(HandleKind newKind) : kind(newKind) {}

    // Nothing reads the kind before the memory is freed, so a plain write would be left out.
    ~Handle() { *const_cast<volatile HandleKind*>(&kind) = HandleKind::Destroyed; }

private:
    HandleKind kind;
};

/// Whether a host has passed a handle of the right kind.
template <class Structure>
bool IsHandle(const Structure* handle)
{
    return handle != nullptr && handle->Kind() == Structure::kKind;
}

}  // namespace ns_ruke
