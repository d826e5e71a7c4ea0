// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <morl/morl.h>
#include <cstdint>
#include <memory>
#include <new>

namespace {

using namespace ns_ruke;

struct alignas(64) Wide : MorlNumber {
    char room[64] = {};
};

/// Fails to be made.
struct Broken : MorlNumber {
    Broken() { throw 1; }
};

TEST(Unit, IsMadeByEveryFormOfNew)
{
    const std::unique_ptr<MorlUnit> quiet(new (std::nothrow) MorlNumber);
    EXPECT_EQ(quiet->unitType, TOKEN_NUMBER);
    for (int i = 0; i < 3; ++i) {
        const std::unique_ptr<MorlUnit> wide(new Wide);
        const std::unique_ptr<MorlUnit> both(new (std::nothrow) Wide);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(wide.get()) % 64, 0U);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(both.get()) % 64, 0U);
    }
    EXPECT_THROW(new Broken, int);
    EXPECT_THROW(new (std::nothrow) Broken, int);
    alignas(MorlNumber) unsigned char place[sizeof(MorlNumber)];
    auto* placed = new (place) MorlNumber;
    placed->~MorlNumber();
}

}  // namespace
