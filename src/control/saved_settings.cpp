#include "nxfv/control/saved_settings.h"

#include <cmath>

#include "nxfv/columns/column_set.h"
#include "nxfv/control/column_setup.h"
#include "nxfv/control/file_viewer.h"
#include "nxfv/control/file_viewer_internal.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/platform/error_state.h"

namespace nxfv::saved_settings {
namespace {

// The stored type of a value: what the default handed to the bag is.
enum class Kind { Colour, Text, Long, Integer, IntBool, Bool };

// The values that take effect only after everything is read (step 2).
struct Pending {
  bool checkBoxes = false, gridLines = false, fullRowSelection = true, moveColumns = true, track = false;
};

struct Setting {
  const char* key;
  Kind kind;
  Variant (*defaultValue)(const ViewerCore&);
  Variant (*get)(const ViewerCore&);
  void (*store)(ViewerCore&, Pending&, const Variant&);
};

Variant Colour(uint32_t bits) { return Variant(static_cast<int32_t>(bits)); }
uint32_t ColourBits(const Variant& v) { return static_cast<uint32_t>(v.AsLong()); }

template <class T>
void SetLook(ViewerCore& core, T ListViewLook::*field, T value) {
  ListViewLook look = core.listView.Look();
  look.*field = value;
  core.listView.SetLook(look);
}

#define NXFV_DEF(v) [](const ViewerCore&) -> Variant { return v; }
#define NXFV_GET(expr) [](const ViewerCore& c) -> Variant { return expr; }
#define NXFV_PUT(stmt)                              \
  [](ViewerCore& c, Pending& p, const Variant& v) { \
    (void)c;                                        \
    (void)p;                                        \
    stmt;                                           \
  }

const Setting kSettings[] = {
    {"BackColor", Kind::Colour, NXFV_DEF(Colour(0x80000005)), NXFV_GET(Colour(c.listView.Look().backColor)),
     NXFV_PUT(SetLook(c, &ListViewLook::backColor, ColourBits(v)))},
    {"ForeColor", Kind::Colour, NXFV_DEF(Colour(0x80000008)), NXFV_GET(Colour(c.listView.Look().foreColor)),
     NXFV_PUT(SetLook(c, &ListViewLook::foreColor, ColourBits(v)))},
    {"CurrentFolder", Kind::Text, NXFV_DEF(Variant("")), NXFV_GET(Variant(c.currentFolder)),
     NXFV_PUT(c.currentFolder = v.AsString())},
    {"ViewOptions", Kind::Long, NXFV_DEF(Variant(int32_t{31})), NXFV_GET(Variant(c.settings.viewOptions)),
     NXFV_PUT(c.settings.viewOptions = v.AsLong())},
    {"ShowFolders", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})), NXFV_GET(Variant(c.settings.showFolders)),
     NXFV_PUT(c.settings.showFolders = v.AsBool())},
    {"ShowFiles", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})), NXFV_GET(Variant(c.settings.showFiles)),
     NXFV_PUT(c.settings.showFiles = v.AsBool())},
    {"ShowHiddenItems", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})), NXFV_GET(Variant(c.settings.showHidden)),
     NXFV_PUT(c.settings.showHidden = v.AsBool())},
    {"ShowSysItems", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})), NXFV_GET(Variant(c.settings.showSystem)),
     NXFV_PUT(c.settings.showSystem = v.AsBool())},
    {"ShowGOUPFolder", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})), NXFV_GET(Variant(c.settings.showGoUp)),
     NXFV_PUT(c.settings.showGoUp = v.AsBool())},
    {"GoUpTopFolder", Kind::Text, NXFV_DEF(Variant("")), NXFV_GET(Variant(c.settings.goUpTopFolder)),
     NXFV_PUT(c.settings.goUpTopFolder = v.AsString())},
    {"pattern", Kind::Text, NXFV_DEF(Variant("*.*")), NXFV_GET(Variant(c.settings.filePattern)),
     NXFV_PUT(c.settings.filePattern = v.AsString())},
    {"ViewStyle", Kind::Integer, NXFV_DEF(Variant(int16_t{FvReport})),
     NXFV_GET(Variant(static_cast<int16_t>(c.listView.ViewStyle()))),
     NXFV_PUT(c.listView.SetViewStyle(static_cast<ViewStyles>(v.AsLong() & 3)))},
    {"VirtualFileList", Kind::Bool, NXFV_DEF(Variant(false)), NXFV_GET(Variant(c.settings.virtualFileList)),
     NXFV_PUT(c.settings.virtualFileList = v.AsBool())},
    {"StartingFolder", Kind::Text,
     [](const ViewerCore& c) -> Variant { return Variant(c.platform.DefaultStartFolder()); },
     NXFV_GET(Variant(c.settings.startingFolder)), NXFV_PUT(c.settings.startingFolder = v.AsString())},
    {"AllowDiveIntoFolders", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})),
     NXFV_GET(Variant(c.settings.allowDiveIntoFolders)), NXFV_PUT(c.settings.allowDiveIntoFolders = v.AsBool())},
    {"AllowDiveIntoArchives", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})),
     NXFV_GET(Variant(c.settings.allowDiveIntoArchives)), NXFV_PUT(c.settings.allowDiveIntoArchives = v.AsBool())},
    {"AllowitemRenaming", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})), NXFV_GET(Variant(c.settings.allowItemRenaming)),
     NXFV_PUT(c.settings.allowItemRenaming = v.AsBool())},
    {"AllowMulticolumnsort", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})),
     NXFV_GET(Variant(c.settings.allowMultiColumnSort)), NXFV_PUT(c.settings.allowMultiColumnSort = v.AsBool())},
    {"AllowFileExecution", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})),
     NXFV_GET(Variant(c.settings.allowFileExecution)), NXFV_PUT(c.settings.allowFileExecution = v.AsBool())},
    {"AllowMultipleSelection", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})),
     NXFV_GET(Variant(c.settings.allowMultipleSelection)), NXFV_PUT(c.settings.allowMultipleSelection = v.AsBool())},
    {"AutoUpdate", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})), NXFV_GET(Variant(c.settings.autoUpdate)),
     NXFV_PUT(c.settings.autoUpdate = v.AsBool())},
    // The list view follows the stored multiple-selection switch from here on.
    {"DefaultKeyHandling", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})),
     NXFV_GET(Variant(c.settings.defaultKeyHandling)),
     NXFV_PUT(c.settings.defaultKeyHandling = v.AsBool();
              SetLook(c, &ListViewLook::multiSelect, c.settings.allowMultipleSelection))},
    {"BorderStyle", Kind::Integer, NXFV_DEF(Variant(int16_t{0})), NXFV_GET(Variant(c.listView.Look().borderStyle)),
     NXFV_PUT(SetLook(c, &ListViewLook::borderStyle, static_cast<int16_t>(v.AsLong())))},
    {"Appearance", Kind::Integer, NXFV_DEF(Variant(int16_t{1})), NXFV_GET(Variant(c.listView.Look().appearance)),
     NXFV_PUT(SetLook(c, &ListViewLook::appearance, static_cast<int16_t>(v.AsLong())))},
    {"Enabled", Kind::Bool, NXFV_DEF(Variant(true)), NXFV_GET(Variant(c.settings.enabled)),
     NXFV_PUT(c.settings.enabled = v.AsBool(); SetLook(c, &ListViewLook::enabled, c.settings.enabled))},
    {"HideColumnHeaders", Kind::Bool, NXFV_DEF(Variant(false)), NXFV_GET(Variant(c.listView.Look().hideColumnHeaders)),
     NXFV_PUT(SetLook(c, &ListViewLook::hideColumnHeaders, v.AsBool()))},
    {"HideSelection", Kind::Bool, NXFV_DEF(Variant(false)), NXFV_GET(Variant(c.listView.Look().hideSelection)),
     NXFV_PUT(SetLook(c, &ListViewLook::hideSelection, v.AsBool()))},
    {"TrackSelection", Kind::IntBool, NXFV_DEF(Variant(int16_t{0})),
     NXFV_GET(Variant(c.listView.Look().hoverSelection)), NXFV_PUT(p.track = v.AsBool())},
    {"AllowMoveColumns", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})),
     NXFV_GET(Variant(c.listView.Look().movableColumns)), NXFV_PUT(p.moveColumns = v.AsBool())},
    {"FullRowSelection", Kind::IntBool, NXFV_DEF(Variant(int16_t{1})),
     NXFV_GET(Variant(c.listView.Look().fullRowSelection)), NXFV_PUT(p.fullRowSelection = v.AsBool())},
    {"ShowGridLines", Kind::IntBool, NXFV_DEF(Variant(int16_t{0})), NXFV_GET(Variant(c.listView.Look().gridLines)),
     NXFV_PUT(p.gridLines = v.AsBool())},
    {"ShowCheckBoxes", Kind::IntBool, NXFV_DEF(Variant(int16_t{0})), NXFV_GET(Variant(c.listView.Look().checkBoxes)),
     NXFV_PUT(p.checkBoxes = v.AsBool())},
};

#undef NXFV_DEF
#undef NXFV_GET
#undef NXFV_PUT

constexpr size_t kCount = sizeof(kSettings) / sizeof(kSettings[0]);
static_assert(kCount == 32, "the saved format has 32 values");

// A bag's value in the stored type of the setting; raises 13 (or 6) when
// it cannot be one.
Variant Convert(Kind kind, const Variant& v) {
  switch (kind) {
    case Kind::Text: return Variant(v.AsString());
    case Kind::Long: return Variant(v.AsLong());
    case Kind::IntBool:
    case Kind::Bool: return Variant(v.AsBool());
    case Kind::Integer: {
      const int32_t n = v.AsLong();
      if (n < -32768 || n > 32767) RaiseError(kErrOverflow);
      return Variant(n);
    }
    case Kind::Colour: {
      // Written as a signed 32-bit number; an unsigned one is taken too.
      const double d = v.AsDouble();
      if (d >= 2147483648.0 && d <= 4294967295.0) return Colour(static_cast<uint32_t>(d));
      return Variant(v.AsLong());
    }
  }
  return v;
}

const Setting* Find(const std::string& key) {
  for (const Setting& s : kSettings)
    if (key == s.key) return &s;
  return nullptr;
}

// Step 1: every value in order; the first that could not be read is kept
// for the one report.
void ReadValues(ViewerCore& core, PropertyBag& bag, Pending& pending) {
  bool failed = false;
  int32_t number = 0;
  std::string description;
  for (const Setting& s : kSettings) {
    const Variant fallback = s.defaultValue(core);
    Variant value;
    if (!RunRecorded([&] { value = Convert(s.kind, bag.ReadProperty(s.key, fallback)); })) {
      if (!failed) {
        number = CurrentError().number;
        description = CurrentError().description;
      }
      failed = true;
      value = Convert(s.kind, fallback);
    }
    s.store(core, pending, value);
  }
  if (failed) {
    SetError(number, description);
    ShowError(core.platform, ".ReadProperties");
  }
}

}  // namespace

const std::vector<std::string>& Keys() {
  static const std::vector<std::string> keys = [] {
    std::vector<std::string> out;
    for (const Setting& s : kSettings) out.emplace_back(s.key);
    return out;
  }();
  return keys;
}

Variant DefaultFor(const ViewerCore& core, const std::string& key) {
  const Setting* s = Find(key);
  return s ? s->defaultValue(core) : Variant();
}

void Read(FileViewer& viewer, PropertyBag& bag) {
  ViewerCore& core = FileViewer::Internal::Core(viewer);
  Pending pending;
  ReadValues(core, bag, pending);
  viewer.setShowCheckBoxes(pending.checkBoxes);
  viewer.setShowGridLines(pending.gridLines);
  viewer.setFullRowSelection(pending.fullRowSelection);
  core.Slot().allowMoveColumns = pending.moveColumns;
  SetLook(core, &ListViewLook::movableColumns, pending.moveColumns);
  if (pending.track) viewer.setTrackSelection(true);
  core.Slot().currentFolder = core.currentFolder;
  core.captions = LoadColumnCaptions(core.platform);
  core.headerOptions = std::make_shared<kCollection>(core.platformRef);
  CompleteHeaderOptions(*core.headerOptions, core.captions);
  ApplyColumns(core, true);
  if (core.settings.virtualFileList) return;
  const std::string folder = core.currentFolder.empty() ? core.settings.startingFolder : core.currentFolder;
  if (!folder.empty()) viewer.setCurrentfolder(folder);
}

void Write(FileViewer& viewer, PropertyBag& bag) {
  const ViewerCore& core = FileViewer::Internal::Core(viewer);
  for (size_t i = 0; i < kCount; ++i) {
    // "Appearance" is written before "BorderStyle": the two swap places.
    size_t at = i;
    if (std::string_view(kSettings[i].key) == "BorderStyle") at = i + 1;
    if (std::string_view(kSettings[i].key) == "Appearance") at = i - 1;
    const Setting& s = kSettings[at];
    bag.WriteProperty(s.key, s.get(core), s.defaultValue(core));
  }
}

}  // namespace nxfv::saved_settings
