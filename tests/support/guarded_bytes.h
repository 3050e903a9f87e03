// A buffer that ends where the mapped memory ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <random>
#include <vector>
#if defined(__unix__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace tests {

/// Bytes behind which reading and writing crashes, where the system can do that.
class GuardedBytes
{
public:
  explicit GuardedBytes(std::size_t size) : size_(size)
  {
#if defined(__unix__)
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t room = (size + page) / page * page;
    mapped_ = room + page;
    base_ = mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (base_ == MAP_FAILED)
      throw std::bad_alloc();
    mprotect(static_cast<std::uint8_t *>(base_) + room, page, PROT_NONE);
    bytes_ = static_cast<std::uint8_t *>(base_) + room - size;
#else
    bytes_ = static_cast<std::uint8_t *>(base_ = ::operator new(size + 1));
#endif
    Fill(1);
  }
  ~GuardedBytes()
  {
#if defined(__unix__)
    munmap(base_, mapped_);
#else
    ::operator delete(base_);
#endif
  }
  GuardedBytes(const GuardedBytes &) = delete;
  GuardedBytes &operator=(const GuardedBytes &) = delete;

  void Fill(unsigned seed)
  {
    std::mt19937 random(seed);
    for (std::size_t i = 0; i < size_; ++i)
      bytes_[i] = static_cast<std::uint8_t>(random());
  }
  std::uint8_t *data()
  {
    return bytes_;
  }
  std::size_t size() const
  {
    return size_;
  }
  std::vector<std::uint8_t> Copy() const
  {
    return {bytes_, bytes_ + size_};
  }

private:
  std::size_t size_, mapped_ = 0;
  void *base_ = nullptr;
  std::uint8_t *bytes_ = nullptr;
};

} // namespace tests
