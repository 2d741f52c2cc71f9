// The archive view's row builder: one item and one row per directory entry
// the archive reader finds, every column filled by its rule.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "nxfv/control/row_texts.h"
#include "nxfv/control/viewer_core.h"

namespace nxfv {

// One directory entry as the reader reports it. Modified is a date value;
// sizes of 2 GiB and more arrive negative (32-bit fields).
struct ArchiveEntry {
  int32_t Index = 0;
  int32_t Total = 0;
  std::string FileName;
  std::string ArchiveExt;
  double Modified = 0;
  int32_t Size = 0;
  int32_t CompSize = 0;
  int32_t Method = 0;
  int32_t Attr = 0;
  std::string Path;
  int32_t flags = 0;
  int32_t CRC = 0;
  std::string Comments;
};

class ArchiveRows {
 public:
  // Looks up the columns once: a host may reorder them, so positions are
  // never assumed.
  explicit ArchiveRows(ViewerCore& core);
  // Adds the entry's item and row. A bad entry (the same folder and name
  // twice) is reported as ".ArchiveFileFound" and the listing goes on.
  void Add(const ArchiveEntry& entry);

 private:
  enum Column { kExt, kSiz, kTyp, kMod, kTim, kCmp, kRat, kCre, kAcc, kMtd, kEnc, kCrc, kSig, kPth, kCom, kAtr,
                kUserd1, kUserd2, kColumnCount };
  void AddUnguarded(const ArchiveEntry& entry);
  // The type name (valid until the next call) and, through the shared row
  // record, the icon of an entry of this kind.
  const std::string& TypeOf(const std::string& fileName, const std::string& ext);
  void FillTexts(NxFileListItem& item, const ArchiveEntry& entry, const std::string& ext, const std::string& type);
  void AskUserData(NxFileListItem& item, const std::shared_ptr<NxFileListItem>& ref, ListRow& row);
  void Put(Column column, std::string text) { texts_.Put(slots_[column], std::move(text)); }

  ViewerCore& core_;
  const LocaleFormats& formats_;
  std::vector<int32_t> slots_;
  RowTexts texts_;
  std::string typeOfNew_;  // the type name of a kind met for the first time
};

}  // namespace nxfv
