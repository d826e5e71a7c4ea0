// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/pass_report.h"

namespace ns_ruke {

/// Gives the uniforms of a report their places in the constant buffer "$Globals", by the packing
/// rules of Direct3D 10: in the order in which they are declared, nothing crosses a boundary of 16
/// bytes that would fit between two, and arrays, their elements and matrices begin at one.
/// Matrices are stored by columns, as HLSL does unless a host asks for rows.
void LayOutConstants(PassReport& report);

}  // namespace ns_ruke
