// SPDX-License-Identifier: MIT
#include "morl/translator/internal/register_order.h"

#include "morl/core/string_helper.h"
#include "morl/translator/internal/bindings.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

namespace ns_ruke {
namespace {

constexpr int kFirstAutomatic = 4;
constexpr int kNoPlace = 999;
constexpr std::string_view kTexcoord = "TEXCOORD";

int AutomaticIndex(const std::string& semantic)
{
    if (semantic.size() < kTexcoord.size()) {
        return kFirstAutomatic;
    }
    const std::int64_t number = StringHelper::ConvertToInt32(semantic.substr(kTexcoord.size()));
    return static_cast<int>(
        std::min<std::int64_t>(kFirstAutomatic + number, std::numeric_limits<int>::max()));
}

/// A declaration with what it is sorted by: its index, then its place in the list.
struct Place {
    int index;
    std::size_t position;
    MorlDeclare* declare;
};

}  // namespace

int RegisterIndex(const MorlDeclare* declare, const MorlProgram* program,
                  std::unordered_map<std::string, std::string>& inputSemantics)
{
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
        return StageOf(program) == kFragmentStage ? AutomaticIndex(inputSemantics[declare->name])
                                                  : kFirstAutomatic;
    default:
        return kNoPlace;
    }
}

// Uses std::sort with the position as tie-break, because std::stable_sort allocates through a
// facility that the standard has withdrawn.
void SortByRegisterIndex(std::vector<MorlDeclare*>& declares, const MorlProgram* program,
                         std::unordered_map<std::string, std::string>& inputSemantics)
{
    std::vector<Place> places;
    places.reserve(declares.size());
    for (MorlDeclare* declare : declares) {
        places.push_back({RegisterIndex(declare, program, inputSemantics), places.size(), declare});
    }
    std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) {
        return a.index != b.index ? a.index < b.index : a.position < b.position;
    });
    std::transform(places.begin(), places.end(), declares.begin(),
                   [](const Place& place) { return place.declare; });
}

}  // namespace ns_ruke
