// SPDX-License-Identifier: MIT
#include "morl/ast/sentences.h"

#include "morl/ast/internal/ownership.h"

namespace ns_ruke {

MorlSentence::~MorlSentence() = default;

MorlEmptySentence::~MorlEmptySentence() = default;

MorlSpecialSentence::~MorlSpecialSentence() = default;

MorlSingleCommentSentence::~MorlSingleCommentSentence() = default;

MorlMultiCommentSentence::~MorlMultiCommentSentence() = default;

MorlDefinitionSentence::~MorlDefinitionSentence()
{
    delete arraySize;
}

MorlAssignSentence::~MorlAssignSentence()
{
    delete target;
    delete value;
}

MorlMarcoAssignSentence::~MorlMarcoAssignSentence() = default;

MorlIfSentence::~MorlIfSentence()
{
    delete condition;
    DeleteElements(sentences);
    DeleteElements(elseSentences);
}

MorlElseIfSentence::~MorlElseIfSentence() = default;

MorlMarcoIfSentence::~MorlMarcoIfSentence()
{
    delete condition;
    DeleteElements(sentences);
    DeleteElements(elseSentences);
}

MorlForSentence::~MorlForSentence()
{
    delete init;
    delete condition;
    delete step;
    DeleteElements(sentences);
}

MorlMarcoForSentence::~MorlMarcoForSentence()
{
    DeleteElements(sentences);
}

}  // namespace ns_ruke
