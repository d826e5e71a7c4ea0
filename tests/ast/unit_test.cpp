// SPDX-License-Identifier: MIT
#include "support/allocation.h"

#include <gtest/gtest.h>
#include <morl/morl.h>
#include <cstdint>
#include <memory>
#include <new>
#include <thread>
#include <vector>

namespace {

using namespace ns_ruke;

struct alignas(64) Wide : MorlNumber {
    char room[64] = {};
};

/// Its constructor throws.
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

// Where nodes are kept at all.
#if !defined(MORL_SANITIZED) && !defined(__MINGW32__)

/// Makes and frees this many nodes. Returns how many of their bytes are kept.
std::size_t Kept(std::size_t count)
{
    std::vector<std::unique_ptr<MorlUnit>> units(count);
    morl_test::ResetAllocations();
    for (auto& unit : units) {
        unit = std::make_unique<MorlNumber>();
    }
    for (auto& unit : units) {
        unit.reset();
    }
    return morl_test::Allocations().bytes;
}

TEST(Unit, IsKeptForTheNextWithinABound)
{
    Kept(1);  // nodes are kept only after a thread has freed its first one
    MorlUnit::ReleaseMemory();
    const std::size_t one = Kept(1);
    EXPECT_GT(one, 0U);
    EXPECT_EQ(Kept(1), 0U);  // reuses the memory of the last one
    EXPECT_EQ(Kept(3), 2 * one);
    MorlUnit::ReleaseMemory();
    const std::size_t most = Kept(10'000);
    EXPECT_LE(most, 64U * 1024 + one);
    EXPECT_GT(most, 64U * 1024 - one);
    MorlUnit::ReleaseMemory();
    EXPECT_EQ(morl_test::Allocations().bytes, 0U);
}

TEST(Unit, IsGivenBackByAThreadThatEnds)
{
    std::thread([] { Kept(100); }).join();
    EXPECT_EQ(morl_test::Allocations().bytes, 0U);
}

#endif

}  // namespace
