// SPDX-License-Identifier: MIT
// The special members of the records that cross the library's boundary, so that the library exports
// them.
#include "morl/compiler/pass_property.h"
#include "morl/compiler/shader_output.h"

namespace ns_ruke {

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
PassProperty::PassProperty() = default;
PassProperty::PassProperty(const PassProperty& other) = default;
PassProperty::PassProperty(PassProperty&& other) noexcept = default;
PassProperty& PassProperty::operator=(const PassProperty& other) = default;
PassProperty& PassProperty::operator=(PassProperty&& other) noexcept = default;
PassProperty::~PassProperty() = default;

ShaderOutput::ShaderOutput() = default;
ShaderOutput::ShaderOutput(const ShaderOutput& other) = default;
ShaderOutput::ShaderOutput(ShaderOutput&& other) noexcept = default;
ShaderOutput& ShaderOutput::operator=(const ShaderOutput& other) = default;
ShaderOutput& ShaderOutput::operator=(ShaderOutput&& other) noexcept = default;
ShaderOutput::~ShaderOutput() = default;

}  // namespace ns_ruke
