// SPDX-License-Identifier: MIT
// Stands in for glslang_judge.cpp where the tool is built without glslang.
#include "check/judge.h"

namespace morlc {

std::unique_ptr<Judge> MakeGlslangJudge()
{
    return nullptr;
}

}  // namespace morlc
