// A folder picker that records every request and answers from a script: a
// folder name is chosen, nullopt is a cancel. With the script empty it
// cancels, like a host that installed no dialog.
#pragma once

#include <deque>
#include <initializer_list>
#include <optional>
#include <vector>

#include "nxfv/platform/folder_picker.h"

namespace nxfv {

struct FolderPickRecord {
  std::string title;
  std::string startFolder;
  bool operator==(const FolderPickRecord&) const = default;
};

class SimFolderPicker : public FolderPickerService {
 public:
  bool PickFolder(const std::string& title, const std::string& startFolder, std::string& chosen) override;

  void Script(std::initializer_list<std::optional<std::string>> answers) {
    script_.insert(script_.end(), answers);
  }
  const std::vector<FolderPickRecord>& Requests() const { return requests_; }

 private:
  std::deque<std::optional<std::string>> script_;
  std::vector<FolderPickRecord> requests_;
};

}  // namespace nxfv
