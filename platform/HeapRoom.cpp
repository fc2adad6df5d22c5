#include "platform/HeapRoom.h"

#if defined(__GLIBC__)

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <vector>

namespace {

constexpr int kLargest = 1 << 30;
constexpr int kUsualGrowth = 1 << 20;
/// Below the size from which memory is mapped apart from the heap.
constexpr size_t kPiece = 100000;

uintptr_t heapEnd() {
  return reinterpret_cast<uintptr_t>(sbrk(0));
}

/// Takes pieces until the heap has had to grow, then frees them. Stops at a piece that is not of the main
/// heap.
void grow() {
  const uintptr_t before = heapEnd();
  std::vector<void *> pieces;
  bool isOfHeap = true;
  while (isOfHeap && heapEnd() == before) {
    pieces.push_back(std::malloc(kPiece));
    isOfHeap = pieces.back() && reinterpret_cast<uintptr_t>(pieces.back()) < heapEnd();
  }
  for (void *piece : pieces) std::free(piece);
}

}  // namespace

void shareOneHeap() {
  mallopt(M_ARENA_MAX, 1);
}

void makeHeapRoom(qint64 bytes) {
  static std::mutex lock;
  const std::scoped_lock guard(lock);
  const int room = int(std::clamp<qint64>(bytes, kUsualGrowth, kLargest));
  mallopt(M_MMAP_THRESHOLD, kUsualGrowth);
  mallopt(M_TRIM_THRESHOLD, kLargest);
  mallopt(M_TOP_PAD, room);
  const uintptr_t page = uintptr_t(sysconf(_SC_PAGESIZE));
  const uintptr_t begin = (heapEnd() + page - 1) / page * page;
  grow();
  mallopt(M_TOP_PAD, kUsualGrowth);
  const uintptr_t end = heapEnd();
  if (end > begin) madvise(reinterpret_cast<void *>(begin), end - begin, MADV_HUGEPAGE);
}

void giveBackHeapRoom() {
  malloc_trim(0);
}

#else

void giveBackHeapRoom() {}
void shareOneHeap() {}
void makeHeapRoom(qint64) {}

#endif
