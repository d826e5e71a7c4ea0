// SPDX-License-Identifier: MIT
#include "support/allocation.h"

#include <gtest/gtest.h>
#include <morl/morl.h>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

/// A host's own form of new, for finding leaks.
void* operator new(std::size_t size, const char* /*file*/, int /*line*/)
{
    return ::operator new(size);
}

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
    delete new ("a form of the host's own", 1) MorlNumber;
}

std::unique_ptr<MorlProgram> Parsed(const std::string& statement)
{
    auto program = std::make_unique<MorlProgram>();
    MorlParser().Parse("void main() { " + statement + "}", *program);
    return program;
}

// A host may put its own nodes into a tree, take nodes out of it, and free them as it likes.
TEST(Unit, IsTheSameToHostsAndLibrary)
{
    for (int round = 0; round < 3; ++round) {
        const auto program = Parsed("if (a) { b = 1; } c = 2; ");
        std::vector<MorlSentence*>& sentences = program->mainFunction->sentences;
        const auto& second = static_cast<const MorlAssignSentence&>(*sentences[1]);
        EXPECT_EQ(static_cast<MorlVariable*>(second.target)->name, "c");
        delete static_cast<MorlIfSentence*>(sentences[0]);
        sentences[0] = ::new MorlEmptySentence;
        sentences.push_back(new MorlMarcoForSentence);
        // Made from a larger node, and shallow: it must not free what it points to.
        auto* assign = new MorlAssignSentence(
            static_cast<MorlMarcoAssignSentence&>(*std::make_unique<MorlMarcoAssignSentence>()));
        sentences.push_back(assign);
    }
}

// Where nodes are kept at all.
#if !defined(MORL_SANITIZED) && !defined(__MINGW32__)

/// Parses and frees this many statements. Returns how many bytes are kept.
std::size_t Kept(std::size_t count)
{
    std::string statements;
    for (std::size_t i = 0; i < count; ++i) {
        statements += ":; ";
    }
    morl_test::ResetAllocations();
    Parsed(statements).reset();
    return morl_test::Allocations().bytes;
}

TEST(Unit, IsKeptForTheNextWithinABound)
{
    Kept(1);  // nodes are kept only after a thread has freed its first one
    MorlUnit::ReleaseMemory();
    Kept(1);
    EXPECT_EQ(Kept(1), 0U);  // reuses the memory of the last one
    EXPECT_EQ(Kept(3), 2 * sizeof(MorlEmptySentence));
    MorlUnit::ReleaseMemory();
    const std::size_t most = Kept(10'000);
    EXPECT_LE(most, 64U * 1024 + sizeof(MorlFunction) + sizeof(MorlEmptySentence));
    EXPECT_GT(most, 64U * 1024 - sizeof(MorlEmptySentence));
    MorlUnit::ReleaseMemory();
    EXPECT_EQ(morl_test::Allocations().bytes, 0U);
}

TEST(Unit, IsGivenBackByAThreadThatEnds)
{
    Kept(1);  // what the process needs once
    MorlUnit::ReleaseMemory();
    std::thread([] { Kept(100); }).join();
    EXPECT_EQ(morl_test::Allocations().bytes, 0U);
}

#endif

}  // namespace
