// The archive view's row builder: one item and one row per directory entry
// the archive reader finds, every column filled by its rule.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
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
  // An item holding the owner, folder, extension and type that the entries
  // of one folder and kind share.
  const NxFileListItem& CommonModel(const std::string& path, const std::string& ext, const std::string& type);

  // The last text given, as one shared block: consecutive entries mostly
  // have the same date, ratio or comment, and share it instead of each
  // holding a copy.
  template <class Shared>
  class LastText {
   public:
    const Shared& For(std::string_view text) {
      if (!filled_ || text != last_) {
        last_.assign(text);
        shared_ = Shared(std::string(text));
        filled_ = true;
      }
      return shared_;
    }

   private:
    std::string last_;
    Shared shared_;
    bool filled_ = false;
  };
  void Put(Column column, std::string_view text) { texts_.Put(slots_[column], text); }

  ViewerCore& core_;
  const LocaleFormats& formats_;
  std::vector<int32_t> slots_;
  RowTexts texts_;
  std::string typeOfNew_;  // the type name of a kind met for the first time
  std::unordered_map<std::string, std::shared_ptr<NxFileListItem>> commonModels_;
  const NxFileListItem* lastModel_ = nullptr;
  std::string lastModelPath_, lastModelExt_;
  LastText<Variant> date_, time_;
  LastText<SharedText> ratio_, comments_;
  // The date texts of the last time stamp: the entries an archiving tool
  // writes in one go mostly share their (two-second) time stamps.
  double stampOf_ = -1;
  std::string dateText_, timeText_, stampText_;
};

}  // namespace nxfv
