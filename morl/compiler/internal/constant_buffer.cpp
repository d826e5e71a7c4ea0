// SPDX-License-Identifier: MIT
#include "morl/compiler/internal/constant_buffer.h"

#include <cstdint>

namespace ns_ruke {
namespace {

constexpr int kNumber = 4;  ///< bytes of a number
constexpr int kRegister = 4 * kNumber;
constexpr std::int64_t kMost = 1 << 30;  ///< bytes; no device has a buffer of this size

std::int64_t ToNextRegister(std::int64_t bytes)
{
    return (bytes + kRegister - 1) / kRegister * kRegister;
}

/// What one element takes up, without what follows it in its last register.
int ElementSize(const ReportDeclare& declare)
{
    return (declare.columns - 1) * kRegister + declare.rows * kNumber;
}

bool StartsRegister(const ReportDeclare& declare)
{
    return declare.columns > 1 || !declare.arraySize.empty();
}

}  // namespace

void LayOutConstants(PassReport& report)
{
    std::int64_t end = 0;
    for (ReportDeclare& uniform : report.uniforms) {
        if (IsSampler(uniform.baseType)) {
            continue;
        }
        if (uniform.bytes == 0) {
            return;
        }
        const int element = ElementSize(uniform);
        const bool crosses = end % kRegister + element > kRegister;
        end = StartsRegister(uniform) || crosses ? ToNextRegister(end) : end;
        uniform.offset = static_cast<int>(end);
        const int before = uniform.elements > 1 ? uniform.elements - 1 : 0;
        end += before * ToNextRegister(element) + element;
        if (end > kMost) {
            return;
        }
    }
    report.constantBytes = static_cast<int>(ToNextRegister(end));
}

}  // namespace ns_ruke
