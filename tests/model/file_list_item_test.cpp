#include "nxfv/model/file_list_item.h"

#include <gtest/gtest.h>

#include <optional>

#include "nxfv/model/file_collection.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv {
namespace {

using Internal = NxFileListItem::Internal;

// Records every event; optionally answers through the by-reference
// arguments or fails.
struct Recorder : NxFileListItemEvents {
  struct Call {
    eventbefs mybef;
    Variant itemvalue;
    std::shared_ptr<NxFileListItem> xitem;
    Variant parameter;
  };
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
  void SetUp() override {
    ClearError();
    item_->SetListener(rec_);
  }
  std::shared_ptr<NxFileListItem> item_ = NxFileListItem::Create();
  std::shared_ptr<Recorder> rec_ = std::make_shared<Recorder>();
};

TEST_F(FileListItemTest, SelectedAndCheckedRaiseOnEveryLetAndKeepTheHandlersAnswer) {
  struct Case { void (NxFileListItem::*let)(bool); bool (NxFileListItem::*get)() const; eventbefs mybef; } cases[] = {
      {&NxFileListItem::setSelected, &NxFileListItem::Selected, eventbefs::doselect},
      {&NxFileListItem::setChecked, &NxFileListItem::Checked, eventbefs::docheck},
  };
  for (const Case& k : cases) {
    auto let = [&](bool v) { ((*item_).*k.let)(v); };
    auto get = [&] { return ((*item_).*k.get)(); };
    rec_->calls.clear();
    rec_->answerValue.reset();
    let(true);
    let(true);  // unchanged value: raised again, the view re-applies it
    ASSERT_EQ(rec_->calls.size(), 2u);
    for (const auto& c : rec_->calls) {
      EXPECT_EQ(c.mybef, k.mybef);
      EXPECT_EQ(c.itemvalue, Variant(true));
      EXPECT_EQ(c.xitem, item_);
      EXPECT_EQ(c.parameter, Variant(std::string()));
    }
    EXPECT_TRUE(get());
    // Whatever the handler leaves in itemvalue is what the field keeps.
    rec_->answerValue = Variant(false);
    let(true);
    EXPECT_FALSE(get());
    rec_->answerValue = Variant(int32_t{-1});
    let(false);
    EXPECT_TRUE(get());
    // An answer that is no Boolean leaves the value that was set, and the
    // failed conversion leaves no error behind.
    rec_->answerValue = Variant("not a flag");
    let(false);
    EXPECT_FALSE(get());
    EXPECT_EQ(CurrentError().number, 0);
  }
}

TEST_F(FileListItemTest, EnsureVisibleAndShellCommandsRaiseOnlyWhereAllowed) {
  rec_->answerOk = true;
  struct Case { typeoffitem type; bool inArchive, ensureRaises, commandRaises; } cases[] = {
      {typeoffitem::None, false, false, true},         {typeoffitem::file, false, true, true},
      {typeoffitem::Folder, false, true, true},        {typeoffitem::file, true, true, false},
      {typeoffitem::VirtualFolder, false, true, false},
  };
  for (const Case& k : cases) {
    auto item = NxFileListItem::Create();
    item->SetListener(rec_);
    item->setListItemTyp(k.type);
    Internal::SetIsInArchive(*item, k.inArchive);
    const int type = static_cast<int>(k.type);
    rec_->calls.clear();
    EXPECT_TRUE(item->EnsureVisible().IsEmpty());
    ASSERT_EQ(rec_->calls.size(), k.ensureRaises ? 1u : 0u) << type;
    EXPECT_TRUE(!k.ensureRaises || (rec_->calls[0].mybef == eventbefs::doensurevisible &&
                                    rec_->calls[0].itemvalue == Variant(std::string())))
        << type;
    rec_->calls.clear();
    EXPECT_EQ(item->ExecuteShellCommand(ItemFileCommands::IcOpen), k.commandRaises) << type;
    EXPECT_EQ(rec_->calls.size(), k.commandRaises ? 1u : 0u) << type;
  }
}

TEST_F(FileListItemTest, LetsNeverFailWithoutOrWithAFailingListener) {
  item_->setListItemTyp(typeoffitem::file);
  rec_->throwIt = true;
  EXPECT_NO_THROW(item_->setSelected(true));
  EXPECT_TRUE(item_->Selected());
  EXPECT_EQ(CurrentError().number, kErrPermissionDenied);

  rec_.reset();  // the listener is gone: the item is a plain property bag
  item_->setChecked(true);
  EXPECT_TRUE(item_->Checked());
  EXPECT_FALSE(item_->ExecuteShellCommand(ItemFileCommands::IcCopy));
  auto other = std::make_shared<Recorder>();
  item_->SetListener(other);
  item_->ClearListener();
  item_->setChecked(true);
  EXPECT_TRUE(other->calls.empty());
}

TEST_F(FileListItemTest, NameChangedMarkAndArchiveRecordStores) {
  item_->setFileName("a.txt");
  EXPECT_TRUE(Internal::NameChanged(*item_));
  auto fixed = NxFileListItem::Create();
  Internal::SetNameFixed(*fixed, true);
  fixed->setFileName("b.txt");
  EXPECT_FALSE(Internal::NameChanged(*fixed));
  // Storing a default never loses the record's other fields.
  Internal::SetMethod(*item_, "Deflated");
  Internal::SetCRC(*item_, 1234);
  Internal::SetCRC(*item_, 0);
  EXPECT_EQ(item_->ArchivInfo().CRC, 0);
  EXPECT_EQ(item_->ArchivInfo().Method, "Deflated");
}

// The items of one listing share one block of owner, folder and type, and
// a change to one item never reaches the others; an 8.3 name that follows
// the file name in capitals keeps the one it had when the file is renamed;
// date fields give back whatever kind was stored.
TEST_F(FileListItemTest, SharedAndCompactFieldsBehaveAsPlainOnes) {
  auto model = NxFileListItem::Create();
  Internal::SharePath(*model, "C:\\data\\");
  Internal::ShareFileTyp(*model, "Text Document");
  Internal::SetCaseMapper(*model, std::make_shared<SimulatedPlatform>());
  auto a = NxFileListItem::Create(), b = NxFileListItem::Create();
  Internal::ShareCommon(*a, *model);
  Internal::ShareCommon(*b, *model);
  a->setPath("C:\\other\\");
  int owner = 0;
  Internal::SetOwner(*b, &owner);
  EXPECT_EQ(a->Path(), "C:\\other\\");
  EXPECT_EQ(b->Path(), "C:\\data\\");
  EXPECT_EQ(Internal::Owner(*b), &owner);

  b->setFileName("readme.txt");
  Internal::DosNameFromName(*b);
  EXPECT_EQ(b->DosName(), Variant("README.TXT"));
  b->setFileName("notes.txt");
  EXPECT_EQ(b->DosName(), Variant("README.TXT"));

  b->setDateModified(Variant("soon"));
  EXPECT_EQ(b->DateModified(), Variant("soon"));
  Internal::StoreObject(*b, ItemVariantField::LastAccessed, model);
  EXPECT_EQ(b->LastAccessed().AsObject(), model);
  b->setLastAccessed(Variant());
  EXPECT_EQ(model.use_count(), 1);  // the stored reference was let go
}

struct KeyEvents : NxFileCollectionEvents {
  void GenericEvent(int32_t& Index, std::string& Key) override { seen.emplace_back(Index, Key); }
  std::vector<std::pair<int32_t, std::string>> seen;
};

// The owner is set once and never kept alive; announcing a key change
// reaches the owning collection only while it lives and holds the key.
TEST_F(FileListItemTest, OwnerIsSetOnceAndAnnouncementsReachALiveOwner) {
  int first = 0, second = 0;
  EXPECT_EQ(Internal::Owner(*item_), nullptr);
  Internal::SetOwner(*item_, &first);
  Internal::SetOwner(*item_, &second);
  EXPECT_EQ(Internal::Owner(*item_), &first);

  auto coll = NxFileCollection::Create(std::make_shared<SimulatedPlatform>());
  std::weak_ptr<NxFileCollection> weak = coll;
  auto listener = std::make_shared<KeyEvents>();
  coll->SetListener(listener);
  NxFileCollection::Internal in(*coll);
  in.Add(Variant("first"), "a");
  auto owned = NxFileListItem::Create();
  Internal::SetOwner(*owned, coll);
  Internal::SetOwner(*owned, &second);
  EXPECT_EQ(Internal::Owner(*owned), coll.get());
  Internal::SetKey(*owned, "b");
  Internal::AnnounceKeyChange(*owned);  // not in the collection yet
  in.Add(owned, "b");
  Internal::AnnounceKeyChange(*owned);
  Internal::AnnounceKeyChange(*item_);  // owner is no collection
  EXPECT_EQ(listener->seen, (std::vector<std::pair<int32_t, std::string>>{{2, "b"}}));
  coll.reset();
  EXPECT_TRUE(weak.expired());  // the item in it does not keep it alive
  EXPECT_NO_THROW(Internal::AnnounceKeyChange(*owned));
  EXPECT_EQ(listener->seen.size(), 1u);
}

}  // namespace
}  // namespace nxfv
