// A file-operation service that records every request and answers from a
// script (by default: success, nothing aborted). It leaves the simulated
// file tree alone; tests that need the files moved do it themselves.
#pragma once

#include <deque>
#include <initializer_list>
#include <vector>

#include "nxfv/platform/file_operation_service.h"

namespace nxfv {

class SimFileOperations : public FileOperationService {
 public:
  FileOperationResult Perform(const FileOperationRequest& request) override;

  void Script(std::initializer_list<FileOperationResult> results) { script_.insert(script_.end(), results); }
  const std::vector<FileOperationRequest>& Requests() const { return requests_; }
  void Clear() { requests_.clear(); }

 private:
  std::deque<FileOperationResult> script_;
  std::vector<FileOperationRequest> requests_;
};

}  // namespace nxfv
