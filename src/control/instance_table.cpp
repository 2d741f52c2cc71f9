#include "nxfv/control/instance_table.h"

namespace nxfv {

InstanceTable& InstanceTable::ForThisThread() {
  thread_local InstanceTable table;
  return table;
}

int16_t InstanceTable::TakeSlot() {
  const int16_t slot = counter_;
  if (counter_ < kLastCountedSlot) ++counter_;
  return slot;
}

}  // namespace nxfv
