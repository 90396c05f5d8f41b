#include "model/pool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#include "model/large_pages.h"
#include "model/section.h"
#include "support/process_test.h"

namespace zek::test {

// Under AddressSanitizer the pool hands every piece on to the heap, and owns none.
#if !defined(__SANITIZE_ADDRESS__)

namespace {

struct Piece {
    void* memory;
    std::size_t size;
};

/// Pieces of all sizes, taken until the pool has several blocks, each filled with its own pattern.
std::vector<Piece> TakeMany(Pool& pool) {
    std::vector<Piece> pieces;
    for (unsigned i = 0; i < 20000; ++i) {
        const std::size_t size = i % Pool::kLargest + 1;
        void* const memory = pool.Take(size);
        std::memset(memory, static_cast<int>(i % 251), size);
        pieces.push_back({memory, size});
    }
    return pieces;
}

}  // namespace

TEST(Pool, GivesEveryPieceMemoryOfItsOwn) {
    Pool pool;
    const std::vector<Piece> pieces = TakeMany(pool);
    for (unsigned i = 0; i < pieces.size(); ++i) {
        const auto [memory, size] = pieces[i];
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignof(void*), 0U);
        const std::vector<unsigned char> expected(size, static_cast<unsigned char>(i % 251));
        ASSERT_EQ(std::memcmp(memory, expected.data(), size), 0) << i;
    }
    for (const auto& [memory, size] : pieces) pool.Give(memory, size);
}

TEST(Pool, GivesOutAgainWhatWasGivenBack) {
    Pool pool;
    void* const kept = pool.Take(104);
    void* const first = pool.Take(104);
    pool.Give(first, 104);
    EXPECT_NE(pool.Take(32), first);
    EXPECT_EQ(pool.Take(97), first) << "of the same size in whole words";
    EXPECT_NE(pool.Take(104), kept);
}

TEST(Pool, OwnsWhatWasTakenUntilAllIsGivenBack) {
    Pool pool;
    int elsewhere = 0;
    const std::vector<Piece> pieces = TakeMany(pool);
    EXPECT_FALSE(pool.Owns(&elsewhere));
    for (const auto& [memory, size] : pieces) ASSERT_TRUE(pool.Owns(memory));
    for (const auto& [memory, size] : pieces) pool.Give(memory, size);
    for (const auto& [memory, size] : pieces) ASSERT_FALSE(pool.Owns(memory));
}

TEST(Pool, TakesBlocksTooLargeForLargePages) {
    constexpr std::size_t kSize = Pool::kLargest;
    Pool pool;
    std::vector<void*> pieces(8 * kMostInLargePages / kSize);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        pieces[i] = pool.Take(kSize);
        std::memset(pieces[i], static_cast<int>(i % 251), kSize);
    }
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto* const bytes = static_cast<const unsigned char*>(pieces[i]);
        ASSERT_EQ(bytes[0], i % 251) << i;
        ASSERT_EQ(bytes[kSize - 1], i % 251) << i;
    }
    for (void* const memory : pieces) pool.Give(memory, kSize);
}

class PooledSection : public ProcessTest {};

TEST_F(PooledSection, StandsBeforeItsEntries) {
    const CZEKSection* group = CZEKSection::Create("main.zek", "GROUP", 1);
    EXPECT_EQ(static_cast<const void*>(group->m_vpEntry[0]), static_cast<const void*>(group + 1));
}

#endif

namespace {

/// What a host derives from a class of the library may be large and need more alignment than the pool gives.
class HostsEntry : public CGESTRING {
public:
    using CGESTRING::CGESTRING;
    long double numbers[16] = {};
};

}  // namespace

class ObjectsOfHost : public ProcessTest {};

TEST_F(ObjectsOfHost, GoBackToWhereTheyCameFrom) {
    for (int round = 0; round < 3; ++round) {
        auto* const group = new (std::nothrow) CGSGROUP(kGroupSection, tagNOTATION{2});
        for (int i = 0; i < 10; ++i) {
            auto* const entry = new HostsEntry(kName, tagNOTATION{1});
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(entry->numbers) % alignof(long double), 0U);
            entry->m_strName = "a name of more than sixteen characters";
            group->m_vpEntry.push_back(entry);
            group->m_vpEntry.push_back(new CGESTRING(kName, tagNOTATION{1}));
        }
        delete CZEKSection::Create("main.zek", "SYSTEM", 1);
        CGSSYSTEM::m_sHeader.clear();
        CZEKSection::Destory();
        EXPECT_TRUE(CGSGROUP::m_sHeader.empty());
    }
}

class PooledEntry : public ProcessTest {};

TEST_F(PooledEntry, MayBeDeletedAndReplacedByTheHost) {
    for (int round = 0; round < 3; ++round) {
        CZEKSection* group = CZEKSection::Create("main.zek", "GROUP", 1);
        group->SetEntry("main.zek", "NAME", "a name of more than sixteen characters", 2);
        delete group->m_vpEntry[1];
        group->m_vpEntry[1] = new CGESTRING(kName, tagNOTATION{1});
        group->SetEntry("main.zek", "NAME", "another name that is as long", 3);
        EXPECT_EQ(group->m_vpEntry[1]->m_vstrSubStr, TextList{"another name that is as long"});
        CZEKSection::Destory();
    }
}

class TypedData : public ProcessTest {};

TEST_F(TypedData, MayBeSuppliedByTheHost) {
    CZEKSection* group = CZEKSection::Create("main.zek", "GROUP", 1);
    group->SetEntry("main.zek", "NAME", "pooled", 2);
    for (int i = 0; i < 3; ++i) {
        CGESTRING entry(kModel, tagNOTATION{1});
        entry.m_ZekEntryData.m_dwType = kModel;
        entry.m_ZekEntryData.m_pData = new std::string("a text of more than sixteen characters");
    }
    EXPECT_EQ(group->m_vpEntry[1]->m_vstrSubStr, TextList{"pooled"});
    CZEKSection::Destory();
    EXPECT_NE(CZEKSection::Create("main.zek", "GROUP", 1), nullptr);
}

}  // namespace zek::test
