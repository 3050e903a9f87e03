// The lock and what is built on it, with real threads; the thread sanitizer watches.

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/platform/shared_data.h"
#include "zelclr/platform/singleton.h"
#include "zelclr/platform/thread_lock.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace ZelUtl;

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 2000;

void InThreads(const std::function<void(int)> &work)
{
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i)
    threads.emplace_back(work, i);
  for (std::thread &thread : threads)
    thread.join();
}

TEST(ThreadLock, WritersAreAloneAndReadersSeeWholeValues)
{
  const ThreadLock lock;
  long first = 0;
  long second = 0;
  InThreads([&](int thread) {
    for (int i = 0; i < kRounds; ++i) {
      if (thread % 2 == 0) {
        const WriteLock guard(lock);
        ++first;
        ++second;
      } else {
        const ReadLock guard(lock);
        ASSERT_EQ(first, second);
      }
    }
  });
  EXPECT_EQ(first, kThreads / 2 * kRounds);
}

struct Counted
{
  Counted() { ++made; }
  ~Counted() { ++destroyed; }
  int value = 42;
  static inline std::atomic<int> made = 0;
  static inline std::atomic<int> destroyed = 0;
};

TEST(Singleton, IsMadeOnceByHoweverManyThreads)
{
  Counted::made = Counted::destroyed = 0;
  Singleton<Counted> singleton;
  EXPECT_FALSE(singleton.HasInstance());
  InThreads([&](int) {
    for (int i = 0; i < kRounds; ++i)
      ASSERT_EQ(singleton.Get().value, 42);
  });
  EXPECT_EQ(Counted::made, 1);
  singleton.Release();
  EXPECT_EQ(Counted::destroyed, 1);
  EXPECT_FALSE(singleton.HasInstance());
  singleton.Release();
  EXPECT_EQ(singleton.Get().value, 42);
  EXPECT_EQ(Counted::made, 2);
}

TEST(Singleton, AFailedConstructionIsTriedAgain)
{
  Singleton<int> singleton;
  const auto fail = []() -> std::unique_ptr<int> { throw std::runtime_error("not yet"); };
  EXPECT_THROW(singleton.Get(fail), std::runtime_error);
  EXPECT_FALSE(singleton.HasInstance());
  EXPECT_EQ(singleton.Get([] { return std::make_unique<int>(5); }), 5);
}

TEST(SharedData, CopiesShareUntilOneDetaches)
{
  Shared<std::vector<int>> a;
  EXPECT_EQ(a.GetData(), nullptr);
  a.GetDataRef().push_back(1);
  Shared<std::vector<int>> b(a);
  Shared<std::vector<int>> c;
  EXPECT_TRUE(c.Reference(a));
  b.Detach();
  b.GetDataRef().push_back(2);
  EXPECT_EQ(a.GetDataRef(), std::vector<int>{1});
  EXPECT_EQ(b.GetDataRef(), (std::vector<int>{1, 2}));
  EXPECT_EQ(c.GetData(), a.GetData());
  Shared<std::vector<int>> empty;
  EXPECT_FALSE(c.Reference(empty)) << "sharing nothing leaves nothing";
  empty.Detach();
  EXPECT_NE(empty.GetData(), nullptr);
}

TEST(SharedData, ThreadsHoldAndDropOneReferencedColour)
{
  const CLR_COLORSPEC source = CLR_COLORSPEC::MakeReference(CLR_COLORSPEC::MakeRGB(1, 2, 3));
  const std::vector<CLR_COLORSPEC> holders(kThreads, source);
  InThreads([&](int thread) {
    CLR_COLORSPEC mine(holders[static_cast<std::size_t>(thread)]);
    for (int i = 0; i < kRounds; ++i) {
      const CLR_COLORSPEC copy(mine);
      mine = CLR_COLORSPEC::MakeReference(copy);
      ASSERT_EQ(mine.GetRed(), 1);
    }
    mine.BreakReference();
  });
  EXPECT_EQ(source.GetBlue(), 3);
}

} // namespace
