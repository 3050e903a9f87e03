// Data that several handles share until one of them detaches.
//
// Threads: the count of holders is atomic; a handle itself belongs to one thread at a time.
// Errors: none but those of the data's own constructor and assignment.
#pragma once

#include <memory>
#include <utility>

namespace ZelUtl {

/// A handle on shared data, made on first use. Copies share; Detach gives this handle data of its own.
template <class Data>
class Shared
{
public:
  Shared() = default;
  Shared(const Shared &) = default;
  Shared &operator=(const Shared &) = default;
  virtual ~Shared() = default;

  /// Takes part in the other handle's data; returns whether data is held now.
  virtual bool Reference(Shared &other)
  {
    data_ = other.data_;
    return data_ != nullptr;
  }

  void EnsureDataExists() const
  {
    if (!data_)
      data_ = std::make_shared<Data>();
  }
  /// The data, empty when none was made yet.
  std::shared_ptr<Data> GetData() const { return data_; }
  /// The data, made when there was none.
  Data &GetDataRef() const
  {
    EnsureDataExists();
    return *data_;
  }
  void PutDataRef(std::shared_ptr<Data> data) { data_ = std::move(data); }

  /// Copy-on-write: from here on this handle's data is a copy that nobody else holds.
  void Detach()
  {
    auto fresh = std::make_shared<Data>();
    *fresh = GetDataRef();
    data_ = std::move(fresh);
  }

private:
  mutable std::shared_ptr<Data> data_;
};

} // namespace ZelUtl
