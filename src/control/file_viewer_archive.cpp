// Showing an archive's entries as one flat list of rows.
#include "columns/date_text.h"
#include "columns/formatting.h"
#include "control/file_viewer.h"
#include "control/instance_table.h"
#include "control/row_texts.h"
#include "platform/error_state.h"
#include "platform/numeric_text.h"
#include "shell/path_text.h"
#include "shell/show_error.h"

namespace nxfv {

namespace {
// The columns an archive row fills, in the order of archiveSlots_.
enum ArchiveColumn { kExt, kSiz, kTyp, kMod, kTim, kCmp, kRat, kCre, kAcc, kMtd, kEnc, kCrc, kSig, kPth, kCom, kAtr,
                     kUserd1, kUserd2, kArchiveColumnCount };
constexpr const char* kArchiveColumnKeys[kArchiveColumnCount] = {
    "ext", "siz", "typ", "mod", "tim", "cmp", "rat", "cre", "acc", "mtd", "enc", "crc", "sig", "pth", "com", "atr",
    "userd1", "userd2"};
}  // namespace

class FileViewer::ArchiveListener : public cArchiveEvents {
 public:
  explicit ArchiveListener(FileViewer& viewer) : viewer_(viewer) {}
  void FileFound(int32_t Index, int32_t Total, std::string FileName, std::string ArchiveExt, double Modified,
                 int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr, std::string Path, int32_t flags,
                 int32_t CRC, std::string Comments) override {
    viewer_.AddArchiveEntry(Index, Total, FileName, ArchiveExt, Modified, Size, CompSize, Method, Attr, Path, flags,
                            CRC, Comments);
  }

 private:
  FileViewer& viewer_;
};

void FileViewer::LoadArchive(const std::string& archivePath) {
  if (busy_) return;
  Platform& p = *platform_;
  p.Ui().LockWindowUpdate(true);
  busy_ = true;
  try {
    currentFolder_ = archivePath;
    InstanceTable::ForThisThread().Row(instanceSlot_).currentFolder = currentFolder_;
    insideArchive_ = true;
    BuildColumns(false);
    ClearView();
    archiveSlots_.clear();
    if (!archiveTexts_) archiveTexts_ = std::make_unique<RowTexts>();
    for (const char* key : kArchiveColumnKeys) archiveSlots_.push_back(SubItemIndexOf(key));
    std::string ext = archivePath.substr(archivePath.rfind('.') + 1);
    ext = p.Locale().CharLower(ext);
    ArchiveListener listener(*this);
    cArchive reader(platform_);
    reader.SetListener(&listener);
    reader.ArchiveName = archivePath;
    reader.ArchiveExt = ext;
    reader.GetInfo();
    listView_.SetVisible(true);
    listView_.Refresh();
    AnnounceNewView(currentFolder_);
    SortView(false);
  } catch (const std::exception& e) {
    RecordException(e);
    listView_.SetVisible(true);
    busy_ = false;
    p.Ui().LockWindowUpdate(false);
    ShowError(p, ".LoadArchive");
    return;
  }
  busy_ = false;
  p.Ui().LockWindowUpdate(false);
}

void FileViewer::AddArchiveEntry(int32_t Index, int32_t Total, const std::string& FileName,
                                 const std::string& ArchiveExt, double Modified, int32_t Size, int32_t CompSize,
                                 int32_t Method, int32_t Attr, const std::string& Path, int32_t flags, int32_t CRC,
                                 const std::string& Comments) {
  Platform& p = *platform_;
  try {
    if (Index == Total) currentArchiveExt_ = ArchiveExt;
    const std::string ext = GetExt(FileName);
    std::string typeName;
    if (!ext.empty()) {
      // The type and icon of a file of this kind, as a probe file in the
      // temporary folder would show them; no file is created.
      const std::string probe = AddSeparator(p, p.Files().TempPath()) + "~" + FileName;
      typeName = GetFileType(ext, probe, archiveIconIndex_, true);
    }
    const LocaleFormats& formats = p.Locale().Formats();
    const NumericSeparators numeric{formats.thousandsSeparator, formats.decimalSeparator};
    const std::string keyText = IsNumericText(FileName, numeric) ? FileName + "##$$" : FileName;
    const std::string rowKey = Path + keyText;
    ListRow& row = listView_.AddRow(rowKey, FileName);

    auto item = NxFileListItem::Create();
    NxFileListItem::Internal::SetKey(*item, FileName);
    item->setFileName(FileName);
    item->setDisplayname(FileName);
    NxFileListItem::Internal::SetOwner(*item, items_);
    item->setExtension(ext);
    item->setAttributes(0);
    NxFileListItem::Internal::SetListed(*item, false);
    item->setListItemTyp(ext.empty() ? typeoffitem::Folder : typeoffitem::file);
    item->setPath(AddBackslash(Path));
    row.SetImage(archiveIconIndex_);

    RowTexts& texts = *archiveTexts_;
    texts.Clear();
    auto put = [&](ArchiveColumn column, std::string text) { texts.Put(archiveSlots_[column], std::move(text)); };
    put(kExt, ext);
    put(kSiz, GroupedNumberText(formats, Size));
    item->setFileSize(Size);
    put(kTyp, typeName);
    item->setFileTyp(typeName);
    const std::string date = DateText(formats, Modified);
    put(kMod, date);
    item->setDateModified(Variant(date));
    const std::string time = TimeText(formats, Modified);
    put(kTim, time);
    item->setTimeModified(Variant(time));
    put(kCmp, GroupedNumberText(formats, CompSize));
    NxFileListItem::Internal::SetCompressedSize(*item, CompSize);
    NxFileListItem::Internal::SetIsInArchive(*item, true);
    float ratio = 0;
    if (Size != 0) {
      ratio = 1.0f - static_cast<float>(CompSize) / static_cast<float>(Size);
      if (ratio < 0) ratio = 0;
    }
    const std::string ratioText = RatioText(formats, ratio);
    put(kRat, ratioText);
    NxFileListItem::Internal::SetRatio(*item, ratioText);
    const std::string stamp = DateTimeText(formats, Modified);
    put(kCre, stamp);
    put(kAcc, stamp);
    std::string method;
    bool encrypted = false;
    if (ArchiveExt == "ace") {
      method = AceMethodText(Method);
      encrypted = (flags & 4) != 0;
    } else if (ArchiveExt == "cab") {
      method = CabMethodText(Method);
    } else if (ArchiveExt == "rar") {
      method = RarMethodText(Method, flags);
      encrypted = (flags & 4) != 0;
    } else if (ArchiveExt == "zip") {
      method = ZipMethodText(Method, flags);
      encrypted = (flags & 1) != 0;
    }
    put(kMtd, method);
    put(kEnc, encrypted ? "True" : "False");
    NxFileListItem::Internal::SetEncoded(*item, encrypted ? -1 : 0);
    const std::string crc = CrcText(CRC);
    put(kCrc, crc);
    NxFileListItem::Internal::SetHexCRC(*item, crc);
    put(kSig, "na");
    NxFileListItem::Internal::SetSignature(*item, "na");
    put(kPth, Path);
    put(kCom, Comments);
    NxFileListItem::Internal::SetComments(*item, Comments);
    put(kAtr, GetAttrString(static_cast<uint32_t>(Attr)));
    item->setAttributes(Attr);
    row.SetTag(Index);
    texts.WriteTo(row, SortKeyBytes() + 40);  // the sort key and the user data to come
    NxFileCollection::Internal(*items_).Add(Variant(item), rowKey, COLLECTION_ADD_OPTIONS::EndOfCollection);

    // The host may fill the user data, but not change the key or the name.
    const std::string key(item->Key());
    const std::string display(item->Displayname());
    std::string a, b;
    if (events_) {
      auto handed = item;
      Subscribe(item);
      events_->SetUserdata(handed, a, b);
    }
    NxFileListItem::Internal::SetKey(*item, key);
    item->setDisplayname(display);
    row.SetSubItem(archiveSlots_[kUserd1], a);
    row.SetSubItem(archiveSlots_[kUserd2], b);
    item->setUserDataA(a);
    item->setUserDataB(b);
  } catch (const std::exception& e) {
    // A bad entry (two entries with the same folder and name) is reported
    // and the listing goes on with the next one.
    RecordException(e);
    ShowError(p, ".ArchiveFileFound");
  }
}

}  // namespace nxfv
