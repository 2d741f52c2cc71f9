// A clipboard of file lists: full paths plus a copy-or-cut mark.
//
// Contract: called on the host's thread. Without a window system the list
// lives in the process (InProcessFileClipboard); a front end with a system
// clipboard may back it with that, using the exchange formats of
// file_uri_list.h. Setting an empty list clears the clipboard. Nothing
// throws.
#pragma once

#include <string>
#include <vector>

namespace nxfv {

class FileClipboardService {
 public:
  virtual ~FileClipboardService() = default;
  virtual void SetFiles(const std::vector<std::string>& paths, bool cut) = 0;
  // The held list and its mark; false (paths emptied, cut false) when the
  // clipboard holds no files.
  virtual bool GetFiles(std::vector<std::string>& paths, bool& cut) const = 0;
  virtual void Clear() = 0;
  virtual bool HasFiles() const = 0;
};

}  // namespace nxfv
