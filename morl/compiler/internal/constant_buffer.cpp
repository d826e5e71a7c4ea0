// SPDX-License-Identifier: MIT
#include "morl/compiler/internal/constant_buffer.h"

namespace ns_ruke {
namespace {

constexpr int kNumber = 4;  ///< bytes of a number
constexpr int kRegister = 4 * kNumber;

int ToNextRegister(int bytes)
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
    int end = 0;
    for (ReportDeclare& uniform : report.uniforms) {
        if (IsSampler(uniform.baseType)) {
            continue;
        }
        if (uniform.bytes == 0) {
            return;
        }
        const int element = ElementSize(uniform);
        const bool crosses = end % kRegister + element > kRegister;
        uniform.offset = StartsRegister(uniform) || crosses ? ToNextRegister(end) : end;
        const int before = uniform.elements > 1 ? uniform.elements - 1 : 0;
        end = uniform.offset + before * ToNextRegister(element) + element;
    }
    report.constantBytes = ToNextRegister(end);
}

}  // namespace ns_ruke
