#include "nxfv/control/archive_rows.h"

#include "nxfv/columns/archive_method.h"
#include "nxfv/columns/date_text.h"
#include "nxfv/columns/formatting.h"
#include "nxfv/control/column_setup.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/host_events.h"
#include "nxfv/platform/numeric_text.h"
#include "nxfv/shell/path_text.h"

namespace nxfv {

namespace {
constexpr const char* kColumnKeys[] = {"ext", "siz", "typ", "mod", "tim", "cmp", "rat", "cre", "acc",
                                       "mtd", "enc", "crc", "sig", "pth", "com", "atr", "userd1", "userd2"};

// 1 - CompSize / Size in single precision, never below 0; 0 for an empty file.
float CompressionRatio(int32_t size, int32_t compSize) {
  if (size == 0) return 0;
  const float ratio = 1.0f - static_cast<float>(compSize) / static_cast<float>(size);
  return ratio < 0 ? 0 : ratio;
}
}  // namespace

ArchiveRows::ArchiveRows(ViewerCore& core) : core_(core), formats_(core.platform.Locale().Formats()) {
  for (const char* key : kColumnKeys) slots_.push_back(SubItemIndexOf(core, key));
}

void ArchiveRows::Add(const ArchiveEntry& entry) {
  RunReported(core_.platform, ".ArchiveFileFound", [&] { AddUnguarded(entry); });
}

const std::string& ArchiveRows::TypeOf(const std::string& fileName, const std::string& ext) {
  static const std::string kNone;
  if (ext.empty()) return kNone;
  // A kind seen before needs no probe path: most archives hold few kinds.
  if (const TypeCacheEntry* known = core_.fileTypes.Cache().Find(ext)) {
    core_.archiveIconIndex = known->iconIndex;
    return known->typeName;
  }
  // The type and icon of a file of this kind, as a probe file in the
  // temporary folder would show them; no file is created.
  Platform& p = core_.platform;
  const std::string probe = AddSeparator(p, p.Files().TempPath()) + "~" + fileName;
  typeOfNew_ = core_.fileTypes.GetFileType(ext, probe, core_.archiveIconIndex, true);
  return typeOfNew_;
}

void ArchiveRows::AddUnguarded(const ArchiveEntry& e) {
  if (e.Index == e.Total) core_.currentArchiveExt = e.ArchiveExt;
  const std::string ext = core_.fileTypes.GetExt(e.FileName);
  const std::string& type = TypeOf(e.FileName, ext);
  const NumericSeparators numeric{formats_.thousandsSeparator, formats_.decimalSeparator};
  const std::string rowKey = e.Path + (IsNumericText(e.FileName, numeric) ? e.FileName + "##$$" : e.FileName);
  // The same folder and name twice: the user is told which entry it is.
  if (core_.listView.FindRow(rowKey))
    RaiseError(kErrKeyNotUnique,
               "Key is not unique in collection: the archive holds \"" + e.Path + e.FileName + "\" more than once");
  ListRow& row = core_.listView.AddRow(rowKey, e.FileName);

  auto item = NxFileListItem::Create();
  NxFileListItem::Internal::SetKey(*item, e.FileName);
  item->setFileName(e.FileName);
  item->setDisplayname(e.FileName);
  NxFileListItem::Internal::SetOwner(*item, core_.items);
  item->setExtension(ext);
  item->setAttributes(0);
  NxFileListItem::Internal::SetListed(*item, false);
  item->setListItemTyp(ext.empty() ? typeoffitem::Folder : typeoffitem::file);
  item->setPath(AddBackslash(e.Path));
  row.SetImage(core_.archiveIconIndex);
  FillTexts(*item, e, ext, type);
  row.SetTag(e.Index);
  texts_.WriteTo(row, core_.sort.KeyBytes() + 40);  // the sort key and the user data to come
  NxFileCollection::Internal(*core_.items).Add(Variant(item), rowKey, COLLECTION_ADD_OPTIONS::EndOfCollection);
  AskUserData(*item, item, row);
}

void ArchiveRows::FillTexts(NxFileListItem& item, const ArchiveEntry& e, const std::string& ext,
                            const std::string& type) {
  texts_.Clear();
  Put(kExt, ext);
  Put(kSiz, GroupedNumberText(formats_, e.Size));
  item.setFileSize(e.Size);
  Put(kTyp, type);
  item.setFileTyp(type);
  const std::string date = DateText(formats_, e.Modified);
  Put(kMod, date);
  item.setDateModified(Variant(date));
  const std::string time = TimeText(formats_, e.Modified);
  Put(kTim, time);
  item.setTimeModified(Variant(time));
  Put(kCmp, GroupedNumberText(formats_, e.CompSize));
  NxFileListItem::Internal::SetCompressedSize(item, e.CompSize);
  NxFileListItem::Internal::SetIsInArchive(item, true);
  const std::string ratio = RatioText(formats_, CompressionRatio(e.Size, e.CompSize));
  Put(kRat, ratio);
  NxFileListItem::Internal::SetRatio(item, ratio);
  const std::string stamp = DateTimeText(formats_, e.Modified);
  Put(kCre, stamp);
  Put(kAcc, stamp);
  const ArchiveMethod method = ArchiveMethodOf(e.ArchiveExt, e.Method, e.flags);
  Put(kMtd, method.name);
  Put(kEnc, method.encrypted ? "True" : "False");
  NxFileListItem::Internal::SetEncoded(item, method.encrypted ? -1 : 0);
  const std::string crc = CrcText(e.CRC);
  Put(kCrc, crc);
  NxFileListItem::Internal::SetHexCRC(item, crc);
  Put(kSig, "na");
  NxFileListItem::Internal::SetSignature(item, "na");
  Put(kPth, e.Path);
  Put(kCom, e.Comments);
  NxFileListItem::Internal::SetComments(item, e.Comments);
  Put(kAtr, GetAttrString(static_cast<uint32_t>(e.Attr)));
  item.setAttributes(e.Attr);
}

void ArchiveRows::AskUserData(NxFileListItem& item, const std::shared_ptr<NxFileListItem>& ref, ListRow& row) {
  // The host may fill the user data, but not change the key or the name.
  const std::string key(item.Key());
  const std::string display(item.Displayname());
  std::string a, b;
  nxfv::AskUserData(core_, ref, a, b);
  NxFileListItem::Internal::SetKey(item, key);
  item.setDisplayname(display);
  row.SetSubItem(slots_[kUserd1], a);
  row.SetSubItem(slots_[kUserd2], b);
  item.setUserDataA(a);
  item.setUserDataB(b);
}

}  // namespace nxfv
