#pragma once

#include <atomic>
#include <utility>

/// Counts its owners; for bodies held by `Shared`. Counting is atomic, so handles may be copied on any thread.
class Counted {
 public:
  Counted() = default;
  Counted(const Counted &) {}
  Counted &operator=(const Counted &) = delete;

  void retain() const { owners.fetch_add(1, std::memory_order_relaxed); }
  /// True when the last owner has gone and the caller must destroy the body.
  [[nodiscard]] bool release() const { return owners.fetch_sub(1, std::memory_order_acq_rel) == 1; }
  bool isShared() const { return owners.load(std::memory_order_acquire) > 1; }

 private:
  mutable std::atomic<int> owners{0};
};

/// Owning pointer to a `Counted` body. The last owner calls `destroyBody(body)`, found by argument type.
template <class Body>
class Shared {
 public:
  Shared() = default;
  explicit Shared(Body *made) : body(made) {
    if (body) body->retain();
  }
  Shared(const Shared &other) : Shared(other.body) {}
  Shared(Shared &&other) noexcept : body(std::exchange(other.body, nullptr)) {}
  Shared &operator=(Shared other) noexcept {
    std::swap(body, other.body);
    return *this;
  }
  ~Shared() {
    if (body && body->release()) destroyBody(body);
  }

  Body *get() const { return body; }
  Body *operator->() const { return body; }
  Body &operator*() const { return *body; }
  explicit operator bool() const { return body != nullptr; }

 private:
  Body *body = nullptr;
};
