// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/stage.h"
#include "morl/translator/internal/bindings.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// The rank of an automatic texture coordinate, such as "TEXCOORD2". They come after the semantics
/// that have a rank of their own, in the order of their numbers.
int RankOfTexcoord(std::string_view semantic);

/// The rank of a declaration within its stage, so that the outputs of a vertex stage and the inputs
/// of a fragment stage are declared in the same order. The stage is only read for automatic texture
/// coordinates; only those of the fragment stage have numbers. Everything else gets 999.
template <class Answers>
int RegisterIndex(Answers& answers, const MorlDeclare* declare)
{
    constexpr int kNoPlace = 999;
    switch (BindingToken(declare)) {
    case TOKEN_SV_POSITION:
        return 0;
    case TOKEN_NORMAL:
        return 1;
    case TOKEN_TANGENT:
        return 2;
    case TOKEN_BINORMAL:
        return 3;
    case TOKEN_TEXAUTO:
        return RankOfTexcoord(answers.Stage() == kFragmentStage
                                  ? answers.InputSemantic(declare->name)
                                  : std::string_view());
    default:
        return kNoPlace;
    }
}

/// A declaration with what it is sorted by: its rank, then its place in the list.
struct RankedDeclare {
    int rank;
    std::size_t position;
    MorlDeclare* declare;
};

/// Sorts by rank; declarations of the same rank keep their order.
void SortByRank(std::vector<RankedDeclare>& ranked);

/// The declarations in the order of their register indexes.
template <class Answers>
Declares InRegisterOrder(Answers& answers, const Declares& declares)
{
    std::vector<RankedDeclare> ranked;
    ranked.reserve(declares.size());
    for (MorlDeclare* declare : declares) {
        ranked.push_back({RegisterIndex(answers, declare), ranked.size(), declare});
    }
    SortByRank(ranked);
    Declares sorted;
    sorted.reserve(ranked.size());
    for (const RankedDeclare& place : ranked) {
        sorted.push_back(place.declare);
    }
    return sorted;
}

}  // namespace ns_ruke
