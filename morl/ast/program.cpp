// SPDX-License-Identifier: MIT
#include "morl/ast/program.h"

#include "morl/ast/internal/ownership.h"

namespace ns_ruke {

MorlProgram::~MorlProgram()
{
    for (const MorlSharedCondition& shared : ownership.conditions) {
        for (MorlMarcoIfDeclare* group : shared.groups) {
            if (group != nullptr) {
                group->condition = nullptr;
            }
        }
    }
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
    delete mainFunction;
    for (const MorlSharedCondition& shared : ownership.conditions) {
        delete shared.condition;
    }
}

}  // namespace ns_ruke
