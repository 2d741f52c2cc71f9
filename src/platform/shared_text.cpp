#include "nxfv/platform/shared_text.h"

#include <cstring>
#include <new>

#include "nxfv/platform/error_state.h"

namespace nxfv {

SharedText::Block* SharedText::MakeBlock(std::string_view text) {
  if (text.empty()) return nullptr;
  if (text.size() > UINT32_MAX) RaiseError(kErrOutOfMemory);
  void* memory = ::operator new(sizeof(Block) + text.size());
  auto* block = new (memory) Block{{1}, static_cast<uint32_t>(text.size())};
  std::memcpy(reinterpret_cast<char*>(block + 1), text.data(), text.size());
  return block;
}

void SharedText::Release(Block* b) {
  if (b && b->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    b->~Block();
    ::operator delete(b);
  }
}

}  // namespace nxfv
