#include "model/file_list_item.h"

#include <gtest/gtest.h>

#include "model/file_collection.h"
#include "platform/error_state.h"
#include "platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

struct Call {
  eventbefs mybef;
  Variant itemvalue;
  std::shared_ptr<NxFileListItem> xitem;
  Variant parameter;
};

// Records every event; optionally answers through the by-reference
// arguments.
class Recorder : public NxFileListItemEvents {
 public:
  void xselitemx(eventbefs& mybef, Variant& itemvalue, std::shared_ptr<NxFileListItem>& xitem, Variant& Parameter,
                 bool& operationok) override {
    calls.push_back({mybef, itemvalue, xitem, Parameter});
    EXPECT_FALSE(operationok);  // every event starts with False
    if (answerValue) itemvalue = *answerValue;
    if (answerParameter) Parameter = *answerParameter;
    operationok = answerOk;
    if (throwIt) RaiseError(kErrPermissionDenied);
  }
  std::vector<Call> calls;
  std::optional<Variant> answerValue, answerParameter;
  bool answerOk = false;
  bool throwIt = false;
};

class FileListItemTest : public ::testing::Test {
 protected:
  std::shared_ptr<NxFileListItem> item_ = NxFileListItem::Create();
  std::shared_ptr<Recorder> rec_ = std::make_shared<Recorder>();
  void SetUp() override { item_->SetListener(rec_); }
};

TEST_F(FileListItemTest, NewItemIsAllZero) {
  EXPECT_EQ(item_->ListItemTyp(), typeoffitem::None);
  EXPECT_EQ(item_->FileName(), "");
  EXPECT_EQ(item_->Key(), "");
  EXPECT_EQ(item_->FileSize(), 0);
  EXPECT_EQ(static_cast<int32_t>(item_->Attributes()), 0);
  EXPECT_FALSE(item_->Selected());
  EXPECT_FALSE(item_->Checked());
  EXPECT_TRUE(item_->DateModified().IsEmpty());
  EXPECT_TRUE(item_->DosName().IsEmpty());
  EXPECT_EQ(item_->ArchivInfo(), AInfo{});
  EXPECT_EQ(NxFileListItem::Internal::Owner(*item_), nullptr);
}

TEST_F(FileListItemTest, SelectedAndCheckedRaiseOnEveryLet) {
  struct Case {
    void (NxFileListItem::*let)(bool);
    bool (NxFileListItem::*get)() const;
    eventbefs mybef;
  } cases[] = {
      {&NxFileListItem::setSelected, &NxFileListItem::Selected, eventbefs::doselect},
      {&NxFileListItem::setChecked, &NxFileListItem::Checked, eventbefs::docheck},
  };
  for (const Case& k : cases) {
    rec_->calls.clear();
    ((*item_).*k.let)(true);
    ((*item_).*k.let)(true);  // unchanged value: raised again
    ASSERT_EQ(rec_->calls.size(), 2u);
    for (const Call& c : rec_->calls) {
      EXPECT_EQ(c.mybef, k.mybef);
      EXPECT_EQ(c.itemvalue, Variant(true));
      EXPECT_EQ(c.xitem, item_);
      EXPECT_EQ(c.parameter, Variant(std::string()));
    }
    EXPECT_TRUE(((*item_).*k.get)());
  }
}

TEST_F(FileListItemTest, HandlerAnswerInItemvalueIsWrittenBack) {
  rec_->answerValue = Variant(false);
  item_->setSelected(true);
  EXPECT_FALSE(item_->Selected());
  rec_->answerValue = Variant(int32_t{-1});
  item_->setChecked(false);
  EXPECT_TRUE(item_->Checked());
  // An answer that is no Boolean leaves the value that was set, and the
  // failed conversion leaves no error behind.
  ClearError();
  rec_->answerValue = Variant("not a flag");
  item_->setChecked(false);
  EXPECT_FALSE(item_->Checked());
  EXPECT_EQ(CurrentError().number, 0);
}

TEST_F(FileListItemTest, SilentSetsRaiseNothing) {
  NxFileListItem::Internal::SetSelectedSilently(*item_, true);
  NxFileListItem::Internal::SetCheckedSilently(*item_, true);
  EXPECT_TRUE(item_->Selected());
  EXPECT_TRUE(item_->Checked());
  EXPECT_TRUE(rec_->calls.empty());
}

TEST_F(FileListItemTest, EnsureVisibleRaisesUnlessTypeIsNone) {
  EXPECT_TRUE(item_->EnsureVisible().IsEmpty());
  EXPECT_TRUE(rec_->calls.empty());
  item_->setListItemTyp(typeoffitem::file);
  EXPECT_TRUE(item_->EnsureVisible().IsEmpty());
  ASSERT_EQ(rec_->calls.size(), 1u);
  EXPECT_EQ(rec_->calls[0].mybef, eventbefs::doensurevisible);
  EXPECT_EQ(rec_->calls[0].itemvalue, Variant(std::string()));
}

TEST_F(FileListItemTest, ExecuteShellCommandPassesParameterByReference) {
  item_->setListItemTyp(typeoffitem::file);
  rec_->answerOk = true;
  rec_->answerParameter = Variant("new name.txt");
  Variant parameter(int32_t{5});
  EXPECT_TRUE(item_->ExecuteShellCommand(ItemFileCommands::IcRename, parameter));
  EXPECT_EQ(parameter, Variant("new name.txt"));
  ASSERT_EQ(rec_->calls.size(), 1u);
  EXPECT_EQ(rec_->calls[0].mybef, eventbefs::doexebef);
  EXPECT_EQ(rec_->calls[0].itemvalue, Variant(int32_t{4}));
  EXPECT_EQ(rec_->calls[0].parameter, Variant(int32_t{5}));
  // The overload without Parameter hands over Empty.
  rec_->answerParameter.reset();
  EXPECT_TRUE(item_->ExecuteShellCommand(ItemFileCommands::IcOpen));
  EXPECT_TRUE(rec_->calls[1].parameter.IsEmpty());
}

TEST_F(FileListItemTest, ExecuteShellCommandIsNotRunOnVirtualFoldersOrArchiveEntries) {
  rec_->answerOk = true;
  struct Case {
    typeoffitem type;
    bool inArchive;
    bool raised;
  } cases[] = {
      {typeoffitem::VirtualFolder, false, false},
      {typeoffitem::file, true, false},
      {typeoffitem::Folder, false, true},
      {typeoffitem::None, false, true},
  };
  for (const Case& k : cases) {
    auto item = NxFileListItem::Create();
    item->SetListener(rec_);
    item->setListItemTyp(k.type);
    NxFileListItem::Internal::SetIsInArchive(*item, k.inArchive);
    rec_->calls.clear();
    EXPECT_EQ(item->ExecuteShellCommand(ItemFileCommands::IcOpen), k.raised) << static_cast<int>(k.type);
    EXPECT_EQ(rec_->calls.size(), k.raised ? 1u : 0u) << static_cast<int>(k.type);
  }
}

TEST_F(FileListItemTest, DetachedItemStillStoresAndReturnsFalse) {
  item_->setListItemTyp(typeoffitem::file);
  rec_.reset();  // the listener is gone
  item_->setSelected(true);
  EXPECT_TRUE(item_->Selected());
  EXPECT_FALSE(item_->ExecuteShellCommand(ItemFileCommands::IcCopy));
  auto other = std::make_shared<Recorder>();
  item_->SetListener(other);
  item_->ClearListener();
  item_->setChecked(true);
  EXPECT_TRUE(other->calls.empty());
}

TEST_F(FileListItemTest, HandlerFailureStaysInsideTheLet) {
  rec_->throwIt = true;
  ClearError();
  EXPECT_NO_THROW(item_->setSelected(true));
  EXPECT_TRUE(item_->Selected());
  EXPECT_EQ(CurrentError().number, kErrPermissionDenied);
}

TEST_F(FileListItemTest, FileNameLetMarksChangeUnlessNameIsFixed) {
  item_->setFileName("a.txt");
  EXPECT_TRUE(NxFileListItem::Internal::NameChanged(*item_));
  auto fixed = NxFileListItem::Create();
  NxFileListItem::Internal::SetNameFixed(*fixed, true);
  fixed->setFileName("b.txt");
  EXPECT_EQ(fixed->FileName(), "b.txt");
  EXPECT_FALSE(NxFileListItem::Internal::NameChanged(*fixed));
}

TEST_F(FileListItemTest, ArchivInfoIsACopy) {
  NxFileListItem::Internal::SetMethod(*item_, "Deflated");
  NxFileListItem::Internal::SetCRC(*item_, 1234);
  AInfo copy = item_->ArchivInfo();
  copy.Method = "changed";
  EXPECT_EQ(item_->ArchivInfo().Method, "Deflated");
  EXPECT_EQ(item_->ArchivInfo().CRC, 1234);
  // Clearing stores defaults whether or not a record exists yet.
  auto plain = NxFileListItem::Create();
  NxFileListItem::Internal::SetIsInArchive(*plain, false);
  NxFileListItem::Internal::SetComments(*plain, "");
  EXPECT_EQ(plain->ArchivInfo(), AInfo{});
  NxFileListItem::Internal::SetCRC(*item_, 0);
  EXPECT_EQ(item_->ArchivInfo().CRC, 0);
  EXPECT_EQ(item_->ArchivInfo().Method, "Deflated");
}

TEST_F(FileListItemTest, StoredObjectReferenceIsReturnedAsItself) {
  auto obj = std::make_shared<Object>();
  NxFileListItem::Internal::StoreObject(*item_, ItemVariantField::LastAccessed, obj);
  NxFileListItem::Internal::StoreObject(*item_, ItemVariantField::DosName, obj);
  EXPECT_EQ(item_->LastAccessed().AsObject(), obj);
  EXPECT_EQ(item_->DosName().AsObject(), obj);
  EXPECT_TRUE(item_->DateModified().IsEmpty());
}

TEST_F(FileListItemTest, OwnerIsSetOnceAndNeverKeptAlive) {
  int first = 0, second = 0;
  NxFileListItem::Internal::SetOwner(*item_, &first);
  NxFileListItem::Internal::SetOwner(*item_, &second);
  EXPECT_EQ(NxFileListItem::Internal::Owner(*item_), &first);

  auto coll = NxFileCollection::Create(std::make_shared<SimulatedPlatform>());
  std::weak_ptr<NxFileCollection> weak = coll;
  auto owned = NxFileListItem::Create();
  NxFileListItem::Internal::SetOwner(*owned, coll);
  NxFileListItem::Internal::SetOwner(*owned, &second);
  EXPECT_EQ(NxFileListItem::Internal::Owner(*owned), coll.get());
  NxFileCollection::Internal(*coll).Add(owned, "k");
  coll.reset();
  EXPECT_TRUE(weak.expired());  // item in the collection, collection freed
}

class KeyEvents : public NxFileCollectionEvents {
 public:
  void GenericEvent(int32_t& Index, std::string& Key) override { seen.emplace_back(Index, Key); }
  std::vector<std::pair<int32_t, std::string>> seen;
};

TEST_F(FileListItemTest, AnnounceKeyChangeReachesTheOwningCollectionWhileItLives) {
  auto coll = NxFileCollection::Create(std::make_shared<SimulatedPlatform>());
  auto listener = std::make_shared<KeyEvents>();
  coll->SetListener(listener);
  NxFileCollection::Internal in(*coll);
  in.Add(Variant("first"), "a");
  NxFileListItem::Internal::SetKey(*item_, "b");
  NxFileListItem::Internal::SetOwner(*item_, coll);
  in.Add(item_, "b");
  NxFileListItem::Internal::AnnounceKeyChange(*item_);
  ASSERT_EQ(listener->seen.size(), 1u);
  EXPECT_EQ(listener->seen[0], (std::pair<int32_t, std::string>{2, "b"}));
  in.Clear();
  coll.reset();
  EXPECT_NO_THROW(NxFileListItem::Internal::AnnounceKeyChange(*item_));
  EXPECT_EQ(listener->seen.size(), 1u);
}

}  // namespace
}  // namespace nxfv
