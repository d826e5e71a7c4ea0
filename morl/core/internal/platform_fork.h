// SPDX-License-Identifier: MIT
#pragma once

namespace ns_ruke {

/// Has functions called around each fork of the process, on the thread that forks: before it, and
/// after it in the parent and in the child. Does nothing where processes do not fork.
void CallAtFork(void (*before)(), void (*inParent)(), void (*inChild)());

}  // namespace ns_ruke
