// One folder listing's row builder: decides which entries show, and makes
// the item and the row of each (or, in a refresh, marks the kept ones).
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "nxfv/control/row_texts.h"
#include "nxfv/control/viewer_core.h"
#include "nxfv/platform/numeric_text.h"
#include "nxfv/platform/shared_text.h"

namespace nxfv {

class FolderRows {
 public:
  // keepItems: a refresh in place (kept rows stay, new entries get no user
  // data). pattern: the file pattern captured when the listing started.
  FolderRows(ViewerCore& core, const std::string& listedPath, bool keepItems, std::string pattern);

  // The ".." row, unless the settings hide it for this folder.
  void AddGoUpRow();
  // Shows entry (or marks its kept row) when the filters let it through.
  void Add(const FindData& entry);
  // For a refresh in place, from an entry of which only the name and the
  // bits Shows reads are known: marks its kept row and answers false, or
  // answers true when the entry shows and has no row yet (Add it then with
  // its full record).
  bool NeedsRow(const FindData& entry);
  // In a refresh: whether the row at rowIndex was found again (rows added
  // by the refresh count as found).
  bool Found(size_t rowIndex) const { return rowIndex >= found_.size() || found_[rowIndex] != 0; }
  const std::string& FolderPath() const { return folderPath_; }

 private:
  // The sub-item index of each column the listing fills, or -1 when the
  // column is not shown (a hidden column gets no text).
  struct Slots {
    int32_t ext = -1, siz = -1, typ = -1, mod = -1, tim = -1, cre = -1, acc = -1, atr = -1, dos = -1, userd1 = -1,
            userd2 = -1;
  };
  static Slots ShownSlots(const ListView& view);
  bool Shows(const FindData& entry, const std::string& name, const std::string& ext) const;
  bool MarkKept(const std::string& key);
  // Add's tests: false for an entry that does not show or whose row is kept.
  bool Screen(const FindData& entry, std::string& name, std::string& ext, std::string& key);
  void AddRow(const FindData& entry, const std::string& name, const std::string& ext, const std::string& key);
  int32_t FillFile(NxFileListItem& item, const FindData& entry, const std::string& name, const std::string& ext);
  void FillTimes(NxFileListItem& item, const FindData& entry);
  // The item whose owner, folder, type name and extension (one shared
  // block) the listing's items of that type take; type null for folders
  // and files of no known type.
  const NxFileListItem& CommonModel(const TypeCacheEntry* type);

  ViewerCore& core_;
  Platform& p_;
  const std::string listedPath_;
  const bool keepItems_;
  const std::string pattern_;
  // The pattern is "*.*" or "*" (blanks in front allowed), which every name
  // matches: the common case needs no match per entry.
  const bool patternMatchesAll_;
  const std::string folderPath_;
  const SharedText sharedFolderPath_;
  const Slots slots_;
  const LocaleFormats& formats_;
  const NumericSeparators numeric_;
  const bool lastAccessDateOnly_;
  const size_t sortKeyBytes_;
  RowTexts texts_;
  // Keyed by the type's shared texts (which the models keep alive).
  std::map<std::pair<const char*, const char*>, std::shared_ptr<NxFileListItem>> commonModels_;
  // In a refresh, one mark per row on view when it began: kept rows are
  // marked by row index, which spares a collection lookup per kept entry.
  std::vector<char> found_;
};

}  // namespace nxfv
