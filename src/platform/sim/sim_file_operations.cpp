#include "nxfv/platform/sim/sim_file_operations.h"

namespace nxfv {

FileOperationResult SimFileOperations::Perform(const FileOperationRequest& request) {
  requests_.push_back(request);
  if (script_.empty()) return {};
  const FileOperationResult result = script_.front();
  script_.pop_front();
  return result;
}

}  // namespace nxfv
