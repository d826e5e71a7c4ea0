// SPDX-License-Identifier: MIT
#include "morl/ast/program.h"

#include "morl/ast/internal/ownership.h"

namespace ns_ruke {

MorlProgram::~MorlProgram()
{
    DeleteElements(comments);
    if (ownership.elements) {
        DeleteElements(inputs);
        DeleteElements(outputs);
        DeleteElements(uniforms);
    } else if (mainFunction != nullptr) {
        mainFunction->sentences.clear();
    }
    DeleteElements(ownership.copies);
    if (ownership.functions) {
        DeleteElements(functions);
    }
    DeleteUnit(mainFunction);
}

}  // namespace ns_ruke
