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

  auto item = NxFileListItem::Create();
  item->setFileName(e.FileName);
  NxFileListItem::Internal::SetKey(*item, e.FileName);
  item->setDisplayname(e.FileName);
  // The owner, folder, extension and type, shared by the entries of one
  // folder and kind.
  NxFileListItem::Internal::ShareCommon(*item, CommonModel(e.Path, ext, type));
  item->setAttributes(0);
  NxFileListItem::Internal::SetListed(*item, false);
  item->setListItemTyp(ext.empty() ? typeoffitem::Folder : typeoffitem::file);
  FillTexts(*item, e, ext, type);
  // The row's block is allocated once: its own text, the columns, the sort
  // key and the user data to come.
  const size_t spare = core_.sort.KeyBytes() + 40;
  ListRow& row = core_.listView.AddRow(rowKey, e.FileName, texts_.Bytes(spare) + e.FileName.size() + 6);
  row.SetImage(core_.archiveIconIndex);
  row.SetTag(e.Index);
  texts_.WriteTo(row, spare);
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
  if (e.Modified != stampOf_) {
    dateText_ = DateText(formats_, e.Modified);
    timeText_ = TimeText(formats_, e.Modified);
    stampText_ = DateTimeText(formats_, e.Modified);
    stampOf_ = e.Modified;
  }
  Put(kMod, dateText_);
  item.setDateModified(date_.For(dateText_));
  Put(kTim, timeText_);
  item.setTimeModified(time_.For(timeText_));
  Put(kCmp, GroupedNumberText(formats_, e.CompSize));
  NxFileListItem::Internal::SetCompressedSize(item, e.CompSize);
  NxFileListItem::Internal::SetIsInArchive(item, true);
  const std::string ratio = RatioText(formats_, CompressionRatio(e.Size, e.CompSize));
  Put(kRat, ratio);
  NxFileListItem::Internal::SetRatio(item, ratio_.For(ratio));
  Put(kCre, stampText_);
  Put(kAcc, stampText_);
  const ArchiveMethod method = ArchiveMethodOf(e.ArchiveExt, e.Method, e.flags);
  Put(kMtd, method.name);
  Put(kEnc, method.encrypted ? "True" : "False");
  NxFileListItem::Internal::SetEncoded(item, method.encrypted ? -1 : 0);
  const std::string crc = CrcText(e.CRC);
  Put(kCrc, crc);
  NxFileListItem::Internal::SetHexCRC(item, crc);
  Put(kSig, "na");
  static const SharedText kNoSignature("na");
  NxFileListItem::Internal::SetSignature(item, kNoSignature);
  Put(kPth, e.Path);
  Put(kCom, e.Comments);
  NxFileListItem::Internal::SetComments(item, comments_.For(e.Comments));
  Put(kAtr, GetAttrString(static_cast<uint32_t>(e.Attr)));
  item.setAttributes(e.Attr);
}

const NxFileListItem& ArchiveRows::CommonModel(const std::string& path, const std::string& ext,
                                              const std::string& type) {
  // Entries come folder by folder: the last kind answers most lookups
  // without building a key.
  if (lastModel_ && path == lastModelPath_ && ext == lastModelExt_) return *lastModel_;
  std::shared_ptr<NxFileListItem>& model = commonModels_[path + '/' + ext];
  if (!model) {
    model = NxFileListItem::Create();
    NxFileListItem::Internal::SetOwner(*model, core_.items);
    model->setPath(AddBackslash(path));
    model->setExtension(ext);
    model->setFileTyp(type);
  }
  lastModel_ = model.get();
  lastModelPath_ = path;
  lastModelExt_ = ext;
  return *model;
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
