// SPDX-License-Identifier: MIT
#include "morl/translator/register_order.h"

#include "morl/core/string_helper.h"
#include "morl/translator/shared_hooks.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

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

}  // namespace

int RegisterIndex(const MorlDeclare* declare, int stage,
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
        return stage == kFragmentStage ? AutomaticIndex(inputSemantics[declare->name])
                                       : kFirstAutomatic;
    default:
        return kNoPlace;
    }
}

void SortByRegisterIndex(std::vector<MorlDeclare*>& declares, int stage,
                         std::unordered_map<std::string, std::string>& inputSemantics)
{
    std::vector<std::pair<int, MorlDeclare*>> places;
    places.reserve(declares.size());
    for (MorlDeclare* declare : declares) {
        places.emplace_back(RegisterIndex(declare, stage, inputSemantics), declare);
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(places.begin(), places.end(), declares.begin(),
                   [](const auto& place) { return place.second; });
}

}  // namespace ns_ruke
