// SPDX-License-Identifier: MIT
#include "morl/translator/internal/register_order.h"

#include "morl/core/string_helper.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace ns_ruke {
namespace {

/// A declaration with what it is sorted by: its rank, then its place in the list.
struct RankedDeclare {
    int rank;
    std::size_t position;
    MorlDeclare* declare;
};

/// What precedes the number is not examined.
bool HasNumber(std::string_view semantic)
{
    return semantic.size() >= kTexcoord.size();
}

/// Automatic texture coordinates come after the semantics that have a rank of their own, in the
/// order of their numbers.
int RankOfTexcoord(std::string_view semantic)
{
    constexpr std::int64_t kFirst = 4;
    const std::int64_t number = HasNumber(semantic) ? TexcoordNumber(semantic) : 0;
    return static_cast<int>(
        std::min<std::int64_t>(kFirst + number, std::numeric_limits<int>::max()));
}

}  // namespace

int TexcoordNumber(std::string_view semantic)
{
    return HasNumber(semantic)
               ? StringHelper::ConvertToInt32(std::string(semantic.substr(kTexcoord.size())))
               : -1;
}

int RegisterIndex(const Answers& answers, const MorlDeclare* declare)
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

// Uses std::sort with the position as tie-break, because std::stable_sort allocates through a
// facility that the standard has withdrawn.
Declares InRegisterOrder(const Answers& answers, const Declares& declares)
{
    std::vector<RankedDeclare> ranked;
    ranked.reserve(declares.size());
    for (MorlDeclare* declare : declares) {
        ranked.push_back({RegisterIndex(answers, declare), ranked.size(), declare});
    }
    std::sort(ranked.begin(), ranked.end(), [](const RankedDeclare& a, const RankedDeclare& b) {
        return a.rank != b.rank ? a.rank < b.rank : a.position < b.position;
    });
    Declares sorted;
    sorted.reserve(ranked.size());
    for (const RankedDeclare& place : ranked) {
        sorted.push_back(place.declare);
    }
    return sorted;
}

}  // namespace ns_ruke
