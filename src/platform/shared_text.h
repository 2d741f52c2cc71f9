// SharedText: an immutable, reference-counted text in one allocation with
// its characters, held through a single pointer.
//
// A listing of a million entries keeps each name, folder and type name in
// several places (the row key, the item's file name, the item's folder);
// sharing one SharedText among them keeps one copy of each text and makes a
// holder 8 bytes instead of the 32 of a std::string. The empty text
// allocates nothing.
//   SharedText a("readme.txt"), b = a;   // one allocation, two holders
//   std::string_view v = a;              // "readme.txt"
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

namespace nxfv {

class SharedText {
 public:
  // The counted block; exposed so that other compact holders (Variant) can
  // keep one by raw pointer.
  struct Block {
    std::atomic<uint32_t> refs;
    uint32_t size;
    const char* Chars() const { return reinterpret_cast<const char*>(this + 1); }
    std::string_view View() const { return {Chars(), size}; }
  };
  // A new block holding text (count 1); null for the empty text.
  static Block* MakeBlock(std::string_view text);
  static void AddRef(Block* b) {
    if (b) b->refs.fetch_add(1, std::memory_order_relaxed);
  }
  static void Release(Block* b);

  SharedText() = default;
  SharedText(std::string_view text) : block_(MakeBlock(text)) {}
  SharedText(const std::string& text) : SharedText(std::string_view(text)) {}
  SharedText(const char* text) : SharedText(std::string_view(text)) {}
  SharedText(const SharedText& o) : block_(o.block_) { AddRef(block_); }
  SharedText(SharedText&& o) noexcept : block_(o.block_) { o.block_ = nullptr; }
  SharedText& operator=(const SharedText& o) {
    SharedText copy(o);
    std::swap(block_, copy.block_);
    return *this;
  }
  SharedText& operator=(SharedText&& o) noexcept {
    std::swap(block_, o.block_);
    return *this;
  }
  ~SharedText() { Release(block_); }

  std::string_view view() const { return block_ ? block_->View() : std::string_view(); }
  operator std::string_view() const { return view(); }
  bool empty() const { return block_ == nullptr; }
  size_t size() const { return block_ ? block_->size : 0; }
  std::string str() const { return std::string(view()); }
  bool operator==(const SharedText& o) const { return view() == o.view(); }
  bool operator==(std::string_view o) const { return view() == o; }

 private:
  Block* block_ = nullptr;
};

}  // namespace nxfv
