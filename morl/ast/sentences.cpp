// SPDX-License-Identifier: MIT
#include "morl/ast/sentences.h"

#include "morl/ast/internal/ownership.h"

namespace ns_ruke {

MorlDefinitionSentence::~MorlDefinitionSentence()
{
    DeleteUnit(arraySize);
}

MorlAssignSentence::~MorlAssignSentence()
{
    DeleteUnit(target);
    DeleteUnit(value);
}

MorlIfSentence::~MorlIfSentence()
{
    DeleteUnit(condition);
    DeleteElements(sentences);
    DeleteElements(elseSentences);
}

MorlMarcoIfSentence::~MorlMarcoIfSentence()
{
    DeleteUnit(condition);
    DeleteElements(sentences);
    DeleteElements(elseSentences);
}

MorlForSentence::~MorlForSentence()
{
    DeleteUnit(init);
    DeleteUnit(condition);
    DeleteUnit(step);
    DeleteElements(sentences);
}

MorlMarcoForSentence::~MorlMarcoForSentence()
{
    DeleteElements(sentences);
}

}  // namespace ns_ruke
